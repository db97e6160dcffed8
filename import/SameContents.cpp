#include <import/SameContents.h>

#include <algorithm>
#include <deque>

namespace Import {

namespace {

using Entries = std::map<std::string, QPDFObjectHandle>;

// Keeps data in a string.
class Text final : public Pipeline {
public:
    Text() : Pipeline("text", nullptr) {}

    // Pipeline
    void write(const unsigned char* data, std::size_t length) override
    {
        bytes.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    std::string bytes;
};

// The data of a stream as it is stored, but for encryption; none when it can't be read.
std::optional<std::string> dataOf(QPDFObjectHandle stream)
{
    Text text;
    if (!stream.pipeStreamData(&text, nullptr, 0, qpdf_dl_none, true))
        return std::nullopt;
    return std::move(text.bytes);
}

// The entries without those of some keys, and without those that are null.
Entries entriesOf(QPDFObjectHandle dictionary, std::initializer_list<const char*> skipped)
{
    Entries entries = dictionary.getDictAsMap();
    for (const char* key : skipped)
        entries.erase(key);
    std::erase_if(entries, [](const auto& entry) { return QPDFObjectHandle(entry.second).isNull(); });
    return entries;
}

bool isFileObject(QPDFObjectHandle object)
{
    return object.isStreamOfType("/ObjStm") || object.isStreamOfType("/XRef");
}

class Comparison {
public:
    Comparison(QPDF& first, QPDF& second) : _first(first), _second(second) {}

    std::optional<std::string> run()
    {
        if (!areSameTrailers())
            return "the trailer";
        if (const auto difference = compareReached())
            return difference;
        return compareOthers();
    }

private:
    bool areSame(QPDFObjectHandle first, QPDFObjectHandle second)
    {
        if (first.isNull() || second.isNull())
            return first.isNull() && second.isNull();
        if (!first.isIndirect() || !second.isIndirect())
            return first.isIndirect() == second.isIndirect() && areSameDirect(first, second);
        return meet(first.getObjGen(), second.getObjGen());
    }
    // Takes two objects for the same, and looks at them later.
    bool meet(QPDFObjGen first, QPDFObjGen second)
    {
        const auto [twin, isNew] = _twins.try_emplace(first, second);
        if (!isNew)
            return twin->second == second;
        _pending.push_back(first);
        return _met.insert(second).second;
    }
    bool areSameDirect(QPDFObjectHandle first, QPDFObjectHandle second)
    {
        if (first.getTypeCode() != second.getTypeCode())
            return false;
        switch (first.getTypeCode()) {
        case ::ot_boolean: return first.getBoolValue() == second.getBoolValue();
        case ::ot_integer: return first.getIntValue() == second.getIntValue();
        case ::ot_real: return first.getRealValue() == second.getRealValue();
        case ::ot_string: return first.getStringValue() == second.getStringValue();
        case ::ot_name: return first.getName() == second.getName();
        case ::ot_array: return areSameArrays(first.getArrayAsVector(), second.getArrayAsVector());
        case ::ot_dictionary: return areSameEntries(entriesOf(first, {}), entriesOf(second, {}));
        case ::ot_stream: return areSameStreams(first, second);
        default: return true;
        }
    }
    bool areSameArrays(const std::vector<QPDFObjectHandle>& first, const std::vector<QPDFObjectHandle>& second)
    {
        return std::equal(first.begin(), first.end(), second.begin(), second.end(),
            [this](const QPDFObjectHandle& a, const QPDFObjectHandle& b) { return areSame(a, b); });
    }
    bool areSameEntries(const Entries& first, const Entries& second)
    {
        return std::equal(first.begin(), first.end(), second.begin(), second.end(),
            [this](const auto& a, const auto& b) { return a.first == b.first && areSame(a.second, b.second); });
    }
    bool areSameStreams(QPDFObjectHandle first, QPDFObjectHandle second)
    {
        if (!areSameEntries(entriesOf(first.getDict(), {"/Length"}), entriesOf(second.getDict(), {"/Length"})))
            return false;
        const auto data = dataOf(first);
        return data && data == dataOf(second);
    }
    bool areSameTrailers()
    {
        const auto entries = [](QPDF& document) {
            QPDFObjectHandle trailer = document.getTrailer();
            return trailer.isDictionaryOfType("/XRef")
                ? entriesOf(trailer, {"/Size", "/Prev", "/Encrypt", "/ID", "/Type", "/W", "/Index", "/Length",
                      "/Filter", "/DecodeParms"})
                : entriesOf(trailer, {"/Size", "/Prev", "/Encrypt", "/ID", "/XRefStm"});
        };
        return areSameEntries(entries(_first), entries(_second)) && isSameId();
    }
    // The first half is what a file keeps for life; files without one get it when they are encrypted.
    bool isSameId()
    {
        QPDFObjectHandle first = _first.getTrailer().getKey("/ID");
        QPDFObjectHandle second = _second.getTrailer().getKey("/ID");
        if (!first.isArray() || first.getArrayNItems() == 0)
            return true;
        return second.isArray() && second.getArrayNItems() > 0
            && areSame(first.getArrayItem(0), second.getArrayItem(0));
    }
    // libqpdf says in the catalog's Extensions, which it makes direct, what a cipher needs that the version hasn't.
    bool areSameCatalogs(QPDFObjectHandle first, QPDFObjectHandle second)
    {
        QPDFObjectHandle firstExtensions = first.getKey("/Extensions");
        QPDFObjectHandle secondExtensions = second.getKey("/Extensions");
        const auto others = [](QPDFObjectHandle extensions) {
            return extensions.isDictionary() ? entriesOf(extensions, {"/ADBE"}) : Entries();
        };
        return areSameEntries(entriesOf(first, {"/Extensions"}), entriesOf(second, {"/Extensions"}))
            && areSameEntries(others(firstExtensions), others(secondExtensions));
    }
    std::optional<std::string> compareReached()
    {
        const QPDFObjGen catalog = _first.getRoot().getObjGen();
        for (; !_pending.empty(); _pending.pop_front()) {
            const QPDFObjGen object = _pending.front();
            QPDFObjectHandle first = _first.getObject(object);
            QPDFObjectHandle second = _second.getObject(_twins.at(object));
            if (!(object == catalog ? areSameCatalogs(first, second) : areSameDirect(first, second)))
                return "object " + object.unparse(' ');
        }
        return std::nullopt;
    }
    // Of what was not met yet, each in the order of ids.
    std::optional<std::string> compareOthers()
    {
        const std::vector<QPDFObjectHandle> first = _first.getAllObjects();
        const std::vector<QPDFObjectHandle> second = _second.getAllObjects();
        const QPDFObjGen encryption = _second.getTrailer().getKey("/Encrypt").getObjGen();
        const auto isLeft = [&](QPDFObjectHandle object) {
            return !object.isNull() && _met.count(object.getObjGen()) == 0 && object.getObjGen() != encryption
                && !isFileObject(object);
        };
        auto next = second.begin();
        for (const QPDFObjectHandle& object : first) {
            if (QPDFObjectHandle(object).isNull() || isFileObject(object) || _twins.count(object.getObjGen()) != 0)
                continue;
            next = std::find_if(next, second.end(), isLeft);
            if (next == second.end() || !meet(object.getObjGen(), next->getObjGen()))
                return "object " + object.getObjGen().unparse(' ');
            if (const auto difference = compareReached())
                return difference;
        }
        return std::nullopt;
    }

    QPDF& _first;
    QPDF& _second;
    std::map<QPDFObjGen, QPDFObjGen> _twins; // of objects of the first document, those of the second
    std::set<QPDFObjGen> _met;               // of the second document
    std::deque<QPDFObjGen> _pending;         // objects of the first one that have a twin, to be compared
};

} // namespace

std::optional<std::string> findDifference(QPDF& first, QPDF& second)
{
    return Comparison(first, second).run();
}

} // namespace Import
