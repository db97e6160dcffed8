#include <import/Conversion.h>

#include <host/files/FileStructure.h>
#include <import/ClassicFile.h>
#include <import/Limits.h>
#include <import/ObjectStreams.h>
#include <import/QpdfDocument.h>
#include <import/Stop.h>
#include <import/Warnings.h>

#include <new>

namespace Import {

namespace {

constexpr std::size_t longestHeader = 128; // of an object that is a reference, in bytes

Permissions permissionsOf(QPDF& document)
{
    return {
        .isOwner = document.ownerPasswordMatched(),
        .mayPrint = document.allowPrintLowRes(),
        .mayPrintWell = document.allowPrintHighRes(),
        .mayChange = document.allowModifyOther(),
        .mayAssemble = document.allowModifyAssembly(),
        .mayFill = document.allowModifyForm(),
        .mayAnnotate = document.allowModifyAnnotation(),
        .mayCopy = document.allowExtractAll(),
        .mayReadAloud = document.allowAccessibility(),
    };
}

// An opening while libqpdf has the file.
class Conversion {
public:
    Conversion(const Ref<Host::FileStripe>& file, const Options& options, Report& report)
        : _options(options), _report(report), _source(std::make_shared<Source>(file)),
          _document(openQpdf(_source, options)), _table(*_document)
    {
    }

    void run(Image& image, std::uint64_t limit, Objects objects)
    {
        examineStreams(limit);
        _report.isDecrypted = _document->isEncrypted();
        if (_report.isDecrypted)
            _report.permissions = permissionsOf(*_document);
        if (_options.isRepairAllowed) {
            _document->getAllObjects(); // reads them
            _table = ObjectTable(*_document); // libqpdf may have made a new one
        }
        _document->getTrailer().getKey("/Root").isNull(); // reads it, and warns before the exception comes
        takeWarnings();
        _document->getRoot();
        ClassicFile(*_document, objects, *_source, image, _report, _faults)
            .write(_table, _replacements, [this] { takeWarnings(); });
        takeWarnings();
        for (const std::string& fault : _faults)
            judge(fault, false);
    }

private:
    void examineStreams(std::uint64_t limit)
    {
        ObjectStreams streams(*_document, *_source, _table, limit);
        streams.examine();
        _report.objectStreams = streams.count();
        _replacements = streams.references();
        _faults = streams.faults();
    }
    void takeWarnings()
    {
        for (const QPDFExc& warning : _document->getWarnings()) {
            if (warning.getMessageDetail().find("std::bad_alloc") != std::string::npos)
                throw std::bad_alloc();
            if (!isReference(warning))
                judge(messageOf(warning), losesNothing(warning));
        }
    }
    // Refuses what loses something, unless it is to be repaired.
    void judge(const std::string& message, bool isHarmless)
    {
        if (!isHarmless && !_options.isRepairAllowed)
            stop(Reason::BrokenRule, message);
        _report.isRepaired = _report.isRepaired || !isHarmless;
        if (_report.warningCount++ < Limits::maxWarnings)
            _report.warnings.push_back(message);
    }
    // Whether the warning is of an object that is nothing but a reference: libqpdf takes its first number for a value,
    // and misses the end after it. The object becomes what the reference leads to.
    bool isReference(const QPDFExc& warning)
    {
        constexpr std::string_view object = "object ";
        if (warning.getMessageDetail() != "expected endobj" || !warning.getObject().starts_with(object))
            return false;
        Lexer name(std::string_view(warning.getObject()).substr(object.size()));
        const std::optional<int> id = name.number();
        const std::optional<int> generation = name.number();
        if (!id || !generation)
            return false;
        const ObjectTable::Entry* const entry = _table.find(*id, *generation);
        if (!entry || entry->isInStream)
            return false;
        const std::string text = _source->readText(static_cast<std::uint64_t>(entry->place), longestHeader);
        Lexer tokens(text);
        if (tokens.number() != id || tokens.number() != generation || tokens.token() != "obj")
            return false;
        const std::optional<Reference> target = tokens.reference();
        if (!target || tokens.token() != "endobj")
            return false;
        _replacements[QPDFObjGen(*id, *generation)] = QPDFObjGen(target->id, target->generation);
        return true;
    }

    const Options& _options;
    Report& _report;
    const std::shared_ptr<Source> _source;
    const std::shared_ptr<QPDF> _document;
    ObjectTable _table;
    Replacements _replacements;
    std::vector<std::string> _faults; // that libqpdf doesn't warn of
};

} // namespace

Ref<Interfaces::Stripe> convert(const Ref<Host::FileStripe>& file, const Options& options, Report& report)
{
    const std::uint64_t limit = options.limit != 0
        ? options.limit
        : std::max(Limits::maxGrowth * file->size(), Limits::growthAllowance);
    const Host::FileStructure structure = Host::findStructure(*file, Host::StructureParts::Tables);
    report.tables = structure.tables + structure.tableStreams;
    if (structure.streamedRows > std::max(Limits::maxRows * file->size(), Limits::rowAllowance))
        stop(Reason::LimitReached, "its tables have " + std::to_string(structure.streamedRows) + " rows");
    if (structure.hasCostlyFilters)
        stop(Reason::LimitReached, "a cross-reference stream can't be decoded within bounds");
    const auto imageOf = [&](Objects objects) {
        Image image(file, limit);
        Conversion(file, options, report).run(image, limit, objects);
        return image.toStripe();
    };
    const Report before = report;
    try {
        return imageOf(Objects::LetGo);
    } catch (const ObjectIsGone&) {
        report = before;
        return imageOf(Objects::Kept);
    }
}

} // namespace Import
