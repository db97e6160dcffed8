#include <import/ObjectStreams.h>

#include <import/Limits.h>
#include <import/Stop.h>

namespace Import {

namespace {

// How much is read of an object, in bytes: a dictionary, and a number with what is around it.
constexpr std::size_t usualDictionary = 1 << 10;
constexpr std::size_t longestNumber = 64;

std::string nameOf(int id)
{
    return "object stream " + std::to_string(id);
}

// Keeps decoded data, up to a limit.
class Collector final : public Pipeline {
public:
    explicit Collector(std::uint64_t limit) : Pipeline("object stream", nullptr), _limit(limit) {}

    // Pipeline
    void write(const unsigned char* data, std::size_t length) override
    {
        if (length > _limit - _text.size())
            stop(Reason::LimitReached, "its object streams have too much data");
        _text.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    const std::string& text() const noexcept { return _text; }

private:
    const std::uint64_t _limit;
    std::string _text;
};

// A number of a dictionary, and what it is when there is none.
std::uint64_t numberOf(const std::map<std::string, QPDFObjectHandle>& entries, const char* key, int absent)
{
    const auto found = entries.find(key);
    const bool isNumber = found != entries.end() && QPDFObjectHandle(found->second).isInteger();
    const long long number = isNumber ? QPDFObjectHandle(found->second).getIntValue() : absent;
    return number < 0 ? 0 : static_cast<std::uint64_t>(number);
}

// libqpdf takes memory for two rows of a predictor, however little data there is.
bool hasLongRows(QPDFObjectHandle parameters)
{
    if (!parameters.isDictionary())
        return false;
    const auto entries = parameters.getDictAsMap();
    std::uint64_t row = 1; // in bits
    constexpr std::pair<const char*, int> factors[] = {{"/Columns", 1}, {"/Colors", 1}, {"/BitsPerComponent", 8}};
    for (const auto& [key, absent] : factors) {
        const std::uint64_t factor = numberOf(entries, key, absent);
        if (factor > Limits::maxPredictorRow / row)
            return true;
        row *= std::max<std::uint64_t>(factor, 1);
    }
    return false;
}

// The same of the parameters of each filter. Arrays go no deeper, however they refer to each other.
bool haveLongRows(QPDFObjectHandle parameters)
{
    if (!parameters.isArray())
        return hasLongRows(parameters);
    const std::vector<QPDFObjectHandle> all = parameters.getArrayAsVector();
    return std::any_of(all.begin(), all.end(), hasLongRows);
}

// Where the value ends that an object's text begins with; its size when that isn't all there.
std::size_t dictionaryEnd(std::string_view text)
{
    Lexer object(text);
    for (int i = 0; i < 3; ++i) // id, generation, "obj"
        object.token();
    object.skipValue();
    return object.place();
}

} // namespace

ObjectStreams::ObjectStreams(QPDF& document, Source& source, const ObjectTable& table, std::uint64_t limit)
    : _document(document), _source(source), _table(table), _left(limit)
{
    for (const ObjectTable::Entry& entry : table.entries())
        if (entry.isInStream)
            _streams[static_cast<int>(entry.place)].push_back(entry.id);
}

void ObjectStreams::examine()
{
    for (const auto& [id, wanted] : _streams)
        examineStream(id, wanted);
}

void ObjectStreams::examineStream(int id, const Ids& wanted)
{
    refuseReferences(id);
    QPDFObjectHandle stream = _document.getObject(id, 0);
    if (!stream.isStream())
        return; // libqpdf warns of it
    const auto entries = stream.getDict().getDictAsMap();
    const auto filter = entries.find("/Filter");
    const auto parameters = entries.find("/DecodeParms");
    const bool hasManyFilters = filter != entries.end() && QPDFObjectHandle(filter->second).isArray()
        && QPDFObjectHandle(filter->second).getArrayNItems() > Limits::maxStreamFilters;
    if (hasManyFilters || (parameters != entries.end() && haveLongRows(parameters->second)))
        stop(Reason::LimitReached, nameOf(id) + " can't be decoded within bounds");
    Collector data(_left);
    bool isDecoded = false;
    if (!stream.pipeStreamData(&data, &isDecoded, 0, qpdf_dl_specialized, true) || !isDecoded)
        return;
    _left -= data.text().size();
    const PackedObjects objects(data.text(), numberOf(entries, "/N", 0), numberOf(entries, "/First", 0));
    examineMembers(id, data.text(), objects, wanted);
}

// What the stream's dictionary refers to is read before its data is decoded. If that were in other object streams,
// these would be unpacked before anybody has looked at them; so only its length may be elsewhere, as a plain number.
void ObjectStreams::refuseReferences(int id)
{
    const ObjectTable::Entry* const entry = _table.find(id, 0);
    if (!entry)
        return; // libqpdf warns of it
    if (entry->isInStream)
        stop(Reason::BrokenRule, nameOf(id) + " is in another one");
    std::string text = textOf(*entry, usualDictionary);
    if (dictionaryEnd(text) == text.size())
        text = textOf(*entry, Limits::maxStreamDictionary);
    const std::size_t end = dictionaryEnd(text);
    Lexer tokens(text);
    bool isRefused = end == text.size();
    std::string_view before; // the token before a reference: its key, where nothing but the dictionary is open
    int depth = 0;
    while (tokens.place() < end && !isRefused) {
        Lexer next = tokens;
        if (const std::optional<Reference> reference = next.reference()) {
            const bool isLength = before == "/Length" && isNumber(*reference);
            isRefused = depth > 1 || (before != "/Extends" && !isLength);
            tokens = next;
        } else {
            before = tokens.token();
            depth += before == "<<" || before == "[" ? 1 : before == ">>" || before == "]" ? -1 : 0;
        }
    }
    if (isRefused)
        stop(Reason::LimitReached, "the dictionary of " + nameOf(id) + " refers to other objects");
}

// Whether the reference leads to a number that is in no stream.
bool ObjectStreams::isNumber(const Reference& reference)
{
    const ObjectTable::Entry* const entry = _table.find(reference.id, reference.generation);
    if (!entry || entry->isInStream)
        return false;
    const std::string text = textOf(*entry, longestNumber);
    Lexer tokens(text);
    return tokens.number() && tokens.number() && tokens.token() == "obj" && tokens.number()
        && tokens.token() == "endobj";
}

std::string ObjectStreams::textOf(const ObjectTable::Entry& entry, std::size_t length)
{
    return _source.readText(static_cast<std::uint64_t>(entry.place), length);
}

void ObjectStreams::examineMembers(int id, const std::string& data, const PackedObjects& objects, const Ids& wanted)
{
    auto next = wanted.begin();
    std::uint64_t mayOverlap = Limits::maxOverlaps * data.size();
    for (const PackedObjects::Member& member : objects.members()) {
        for (; next != wanted.end() && *next < member.id; ++next)
            _faults.push_back("object " + std::to_string(*next) + " is not in " + nameOf(id));
        if (next == wanted.end() || *next != member.id)
            continue; // libqpdf leaves it alone
        ++next;
        const PackedObjects::Text text = objects.textOf(member);
        if (text.length > mayOverlap)
            stop(Reason::LimitReached, "the objects of " + nameOf(id) + " overlap too often");
        mayOverlap -= text.length;
        if (text.reference)
            _references[QPDFObjGen(member.id, 0)] = QPDFObjGen(text.reference->id, text.reference->generation);
        else if (!text.isWhole)
            _faults.push_back(
                "object " + std::to_string(member.id) + " goes on where the next one begins in " + nameOf(id));
    }
    for (; next != wanted.end(); ++next)
        _faults.push_back("object " + std::to_string(*next) + " is not in " + nameOf(id));
}

} // namespace Import
