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

KeptSources::KeptSources(std::vector<KeptSource> sources) noexcept : _sources(std::move(sources))
{
    _places.reserve(_sources.size());
    for (const KeptSource& source : _sources)
        _places.emplace(source.value.get(), _places.size());
}

Ref<TConstArray<std::uint8_t>> KeptSources::of(const Value& value) const noexcept
{
    const auto place = _places.find(&value);
    if (place == _places.end() || !isIntact(_sources[place->second]))
        return nullptr;
    return _sources[place->second].bytes;
}

void KeptSources::addUnwritten(ReadingNotes& notes, const Value* other) const noexcept
{
    for (const KeptSource& source : _sources)
        if (source.value.get() == other || !isIntact(source))
            notes.add(source.note, source.id, source.offset, source.count);
}

} // namespace Libraries::Files::PDF
