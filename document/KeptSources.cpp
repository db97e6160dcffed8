#include <document/KeptSources.h>

#include <document/ValueParser.h>
#include <platform/MemoryStream.h>
#include <stripes/ByteElements.h>
#include <values/DictionaryObj.h>
#include <values/Exact.h>

namespace Libraries::Files::PDF {

namespace {

// What the library makes of a source.
Ref<Value> readSource(const TConstArray<std::uint8_t>& source)
{
    const Ref<MemoryStream> bytes = MemoryStream::create(0, 1);
    bytes->append(source.data(), source.size());
    bytes->seek(0);
    const Ref<ByteElements> stripe = make<ByteElements>(bytes);
    ElementReader elements(*stripe);
    ValueParser parser(elements);
    if (source.data()[0] == '<')
        return parser.readDictionary();
    return parser.readValue();
}

bool isIntact(const KeptSource& source)
{
    return isSameExactly(source.value, readSource(*source.bytes));
}

} // namespace

KeptSources::KeptSources(std::vector<KeptSource> sources) noexcept
{
    _sources.reserve(sources.size());
    for (KeptSource& source : sources) {
        const Value* const key = source.value.get();
        _sources.emplace(key, std::move(source));
    }
}

Ref<TConstArray<std::uint8_t>> KeptSources::of(const Value& value) const noexcept
{
    const auto found = _sources.find(&value);
    return found != _sources.end() && isIntact(found->second) ? found->second.bytes : nullptr;
}

void KeptSources::addUnwritten(ReadingNotes& notes, const Value* other) const noexcept
{
    for (const auto& [value, source] : _sources)
        if (value == other || !isIntact(source))
            notes.add(source.note, source.id, source.offset, source.count);
}

} // namespace Libraries::Files::PDF
