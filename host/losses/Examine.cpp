#include <host/losses/Examine.h>

#include <document/ExactWriting.h>
#include <document/Inspection.h>
#include <host/base/Budget.h>
#include <host/base/ErrorWords.h>
#include <host/files/Open.h>
#include <host/losses/FormatComparison.h>
#include <host/losses/ObjectExamination.h>
#include <host/losses/PartialMarks.h>
#include <platform/Limits.h>
#include <values/Dictionary.h>
#include <values/Object.h>

#include <algorithm>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

constexpr std::uint64_t maxOffset = 9'999'999'999; // of ten digits

Refusal endless()
{
    return {Reason::LimitReached, "has objects that overlap too often to be examined"};
}

// Accepts a written file and keeps nothing but its size.
class Counter final : public ::Object, public virtual Interfaces::Stream, public virtual Interfaces::ByteWriting {
public:
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint32_t); }
    std::uint64_t read(BufferDesc&, std::uint64_t, std::uint32_t) noexcept override { return 0; }
    std::uint64_t write(BufferDesc&, std::uint64_t count, std::uint32_t) noexcept override
    {
        _count += count;
        return count;
    }
    bool takesBytes() const noexcept override { return true; }
    std::uint64_t writeBytes(const void*, std::uint64_t count) noexcept override
    {
        _count += count;
        return count;
    }
    std::uint64_t count() const noexcept { return _count; }

private:
    std::uint64_t _count = 0;
};

// The comments that belong to no object: between the header line and the first one, and in the newest table.
void examineHeader(FileExamination& file)
{
    file.text().moveTo(0);
    FormatReader reader(file.text(), 0);
    reader.skipSpace();
    file.addComments(reader.takeComments());
    for (const FormatReader::Range& comment : file.chain().comments()) {
        file.text().moveTo(comment.begin);
        file.text().at(comment.end - 1);
        file.addComments({comment});
    }
}

// Takes out what is examined on its own, and the Size, which every save makes anew.
void removeMarks(FormatValue& trailer)
{
    std::vector<FormatValue> parts;
    for (std::size_t i = 0; i + 1 < trailer.parts.size(); i += 2) {
        const FormatValue& key = trailer.parts[i];
        const auto isKey = [&key](const auto& mark) { return key.isName(mark.key); };
        if (key.text == "Size" || std::any_of(std::begin(partialMarks), std::end(partialMarks), isKey))
            continue;
        parts.push_back(std::move(trailer.parts[i]));
        parts.push_back(std::move(trailer.parts[i + 1]));
    }
    trailer.parts = std::move(parts);
}

void examineTrailer(FileExamination& file)
{
    if (file.chain().trailer().kind == FormatValue::Kind::Nothing)
        return; // the library found one without the table
    SourceText& text = file.text();
    const auto elements = exactText(file.document(), file.document()->trailer());
    const std::string bytes = elements ? bytesOf(*elements) : std::string();
    SourceText writtenBytes(bytes);
    FormatValue written = FormatReader(writtenBytes, 0).readValue();
    const std::uint64_t begin = file.chain().trailer().begin;
    text.moveTo(begin);
    FormatReader reader(text, begin);
    FormatValue meant = reader.readValue();
    reader.skipSpace();
    file.clearObject();
    file.addComments(reader.takeComments());
    for (const auto& [key, kind, reason, message] : partialMarks) {
        const FormatValue* mark = meant.find(key);
        const FormatValue* kept = written.find(key);
        const std::string start = std::string("/") + key + " ";
        if (mark)
            file.add(kind, mark->begin, start + text.slice(mark->begin, mark->end, Limits::maxLossText),
                kept ? start + writtenBytes.slice(kept->begin, kept->end, Limits::maxLossText) : "");
    }
    file.addLostReferences(meant);
    removeMarks(meant);
    removeMarks(written);
    FormatComparison(text, writtenBytes, file.lossTemplate(), file.losses()).compare(meant, written);
}

// An object that the tables have and the document doesn't.
void examineMissing(FileExamination& file, std::uint32_t id, const TableChain::Row& row)
{
    if (!file.isInFile(id, row))
        return;
    const bool isEarlier = row.place == TableChain::Place::EarlierTable;
    file.text().moveTo(row.offset);
    file.text().at(row.offset + Limits::maxLossText - 1);
    file.losses().add({isEarlier ? LossKind::EarlierRevision : LossKind::SecondSubsection, id,
        static_cast<std::uint16_t>(row.generation), row.offset,
        file.text().slice(row.offset, file.text().size(), Limits::maxLossText), {}});
}

void examineMissing(FileExamination& file)
{
    for (const auto& [id, row] : file.chain().rows())
        if (row.inUse && row.place != TableChain::Place::FirstSubsection && !file.hasObject(id, row.generation))
            examineMissing(file, id, row);
}

Result<Examination> examine(FileExamination& file, Budget& budget)
{
    examineHeader(file);
    for (const auto& object : objectsAsWritten(file.document())) {
        const std::uint64_t before = file.losses().size();
        examineObject(file, *object);
        if (file.isEndless())
            return endless();
        if (!budget.spend(Cost::Texts, file.losses().size() - before))
            return budget.refusal();
    }
    Examination result;
    examineTrailer(file);
    examineMissing(file);
    if (file.isEndless())
        return endless();
    const Ref<Counter> counter = make<Counter>();
    const bool isWritable = file.losses().count(LossKind::Unwritable) == 0;
    if (isWritable && writeExactly(file.document(), counter))
        result.size = counter->count();
    else if (isWritable && Error::get() == ErrOutOfRange)
        result.tableProblem = "the object numbers leave gaps that are too large for a table";
    if (result.size > maxOffset)
        result.tableProblem = "the new file would be larger than the ten digits of an offset can express";
    result.losses = std::move(file.losses());
    return result;
}

} // namespace

Result<Examination> examine(const Ref<FileStripe>& file, std::uint64_t limitFactor) noexcept
{
    const Result<OpenedFile> opened = open(file);
    if (!opened)
        return opened.refusal();
    FileExamination examination(opened->document, file);
    Budget budget(file->size(), limitFactor);
    Result<Examination> result = examine(examination, budget);
    if (const auto failure = file->readFailure())
        return *failure;
    if (!file->isUnchanged())
        return changedMeanwhile();
    return result;
}

Result<Examination> examine(const std::string& path, std::uint64_t limitFactor) noexcept
{
    const Result<Ref<FileStripe>> file = FileStripe::open(path);
    return file ? examine(*file, limitFactor) : Result<Examination>(file.refusal());
}

} // namespace Host
