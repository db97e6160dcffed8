#include "Forecast.h"

#include <zlib.h>

#include <algorithm>
#include <unordered_map>

namespace Fuzz {

namespace {

constexpr std::uint64_t countless = 1'000'000'000; // more than anybody may have

std::uint64_t product(std::uint64_t a, std::uint64_t b)
{
    return a != 0 && b > countless / a ? countless : std::min(a * b, countless);
}

// Counts the clones of values with all that they refer to, each time anew where it is referred to more
// than once. References make chains as long as a document has objects, so they are not followed by calls.
class CloneCount {
public:
    explicit CloneCount(const Ref<PDF::Document>& document) noexcept : _document(document) {}

    std::uint64_t of(const Ref<PDF::Value>& value) noexcept
    {
        std::vector<Open> open;
        begin(nullptr, value, open);
        std::uint64_t total = 0;
        while (!open.empty()) {
            Open& innermost = open.back();
            if (innermost.next < innermost.references.size()) {
                follow(innermost.references[innermost.next++], open);
                continue;
            }
            total = innermost.total;
            _known[innermost.object] = total;
            open.pop_back();
            if (!open.empty())
                add(open.back(), total);
        }
        _known.erase(nullptr);
        return total;
    }

private:
    // An object whose references are being counted; none for the value itself.
    struct Open {
        const PDF::Object* object;
        std::vector<Ref<PDF::Object>> references;
        std::size_t next;
        std::uint64_t total;
    };

    static void add(Open& open, std::uint64_t count) noexcept { open.total = std::min(open.total + count, countless); }

    void begin(const PDF::Object* object, const Ref<PDF::Value>& value, std::vector<Open>& open) noexcept
    {
        Open added{object, {}, 0, 0};
        visitValues(value, [&](const Ref<PDF::Value>& part) {
            ++added.total;
            if (const auto reference = PDF::valueAs<PDF::ObjectRef>(part))
                if (Ref<PDF::Object> target = _document->object(reference))
                    added.references.push_back(std::move(target));
        });
        _known[object] = 0; // a way back to it ends the cloning
        open.push_back(std::move(added));
    }

    void follow(const Ref<PDF::Object>& object, std::vector<Open>& open) noexcept
    {
        const auto known = _known.find(object.get());
        if (known == _known.end())
            begin(object.get(), object->value(), open);
        else
            add(open.back(), known->second);
    }

    const Ref<PDF::Document> _document;
    std::unordered_map<const PDF::Object*, std::uint64_t> _known;
};

// The clones of an entry of a dictionary, 0 without one.
std::uint64_t clonesOfEntry(CloneCount& count, const Ref<PDF::Dictionary>& dictionary, const char* key)
{
    const Ref<PDF::Value> value = dictionary ? dictionary->find(::String::create(key)) : nullptr;
    return value ? count.of(value) : 0;
}

// The most that pages of a document have of an entry, the root of the page tree included.
std::uint64_t mostOfEntry(const Ref<PDF::Document>& document, const char* key)
{
    CloneCount count(document);
    std::uint64_t most = 0;
    for (const Ref<PDF::Object>& page : document->getPages())
        most = std::max(most, clonesOfEntry(count, document->valueAsDict(page->value()), key));
    if (const Ref<PDF::Object> root = document->getPageCatalog())
        most = std::min(most + clonesOfEntry(count, document->valueAsDict(root->value()), key), countless);
    return most;
}

// The most that stands for a value in a file, what is in it left out.
std::uint64_t charactersOf(const Ref<PDF::Value>& value)
{
    constexpr std::uint64_t mostOfOthers = 16; // brackets, words, references, and the blank in front
    if (const Ref<PDF::Number> number = PDF::valueAs<PDF::Number>(value))
        return 2 + std::to_string(number->intPart()).size() + std::to_string(number->fracPart()).size();
    if (const Ref<PDF::Name> name = PDF::valueAs<PDF::Name>(value))
        return 2 + name->value()->length();
    std::uint64_t count = mostOfOthers;
    if (const Ref<PDF::String> string = PDF::valueAs<PDF::String>(value)) {
        count += string->value() ? 4 * string->value()->length() : 0;
        count += string->data() ? 2 * string->data()->size() : 0;
    } else if (const Ref<PDF::Dictionary> dictionary = PDF::valueAs<PDF::Dictionary>(value)) {
        const auto keys = dictionary->keys();
        for (const Ref<::String>& key : *keys)
            count += 2 + key->length();
    }
    return count;
}

std::uint64_t longestArray(const Ref<PDF::Document>& document)
{
    std::uint64_t longest = 0;
    visitValues(document, [&longest](const Ref<PDF::Value>& value) {
        if (const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value))
            longest = std::max(longest, array->size());
    });
    return longest;
}

} // namespace

Inflated inflated(std::string_view data, std::uint64_t most) noexcept
{
    Inflated result{data.empty() ? Inflated::End::Whole : Inflated::End::Damaged, {}};
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return result;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    char block[65536];
    int state = Z_OK;
    while (state == Z_OK && result.bytes.size() <= most) {
        stream.next_out = reinterpret_cast<Bytef*>(block);
        stream.avail_out = sizeof(block);
        state = inflate(&stream, Z_NO_FLUSH);
        result.bytes.append(block, sizeof(block) - stream.avail_out);
    }
    inflateEnd(&stream);
    if (state == Z_STREAM_END)
        result.end = Inflated::End::Whole;
    if (result.bytes.size() > most)
        result.end = Inflated::End::TooLong;
    return result;
}

std::optional<std::string_view> storedIn(
    std::string_view file, const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream) noexcept
{
    const Ref<PDF::Number> length = numberIn(document, stream->dict(), "Length");
    const std::uint64_t offset = stream->strmOfs();
    if (!length || length->intPart() < 0 || length->fracPart() != 0 || offset >= file.size()
        || static_cast<std::uint64_t>(length->intPart()) > file.size() - offset)
        return std::nullopt;
    return file.substr(offset, static_cast<std::uint64_t>(length->intPart()));
}

std::uint64_t elementsToWrite(const Ref<PDF::Document>& document, std::string_view file) noexcept
{
    std::uint64_t elements = 0;
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document)) {
        const Ref<Interfaces::Stripe> held = stream->strmData();
        const auto stored = storedIn(file, document, stream);
        elements += held ? held->size() : stored ? stored->size() : 0;
    }
    visitValues(document, [&elements](const Ref<PDF::Value>& value) { elements += charactersOf(value); });
    return elements;
}

bool isFlate(const Ref<PDF::StreamObj>& stream) noexcept
{
    return stream->compression() == PDF::Compression::Flate;
}

BackgroundCost costOfBackground(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign,
    std::string_view foreignFile) noexcept
{
    BackgroundCost cost;
    const std::uint64_t pages = document->getPages().size();
    const std::uint64_t resources = mostOfEntry(document, "Resources") + mostOfEntry(foreign, "Resources");
    cost.clones = product(pages, resources) + product(foreign->getPages().size(), mostOfEntry(foreign, "Contents"));
    // Where categories are arrays, each element of one is compared with each of the other.
    const std::uint64_t grown = longestArray(foreign) + product(pages, longestArray(document));
    constexpr std::uint64_t comparisonsPerClone = 1000;
    cost.clones += product(pages, product(longestArray(document), grown)) / comparisonsPerClone;
    for (const Ref<PDF::StreamObj>& stream : streamsOf(foreign)) {
        const Ref<Interfaces::Stripe> held = stream->strmData();
        const auto stored = storedIn(foreignFile, foreign, stream);
        cost.elements += held ? held->size() : stored ? stored->size() : 0;
    }
    return cost;
}

} // namespace Fuzz
