#include <values/StreamObj.h>

#include <platform/StrConv.h>
#include <values/FilterEntry.h>

namespace Libraries::Files::PDF {

namespace {

constexpr std::uint64_t noOffset = ~std::uint64_t(0);

} // namespace

Ref<::String> Stream::asText() const noexcept
{
    const Ref<::String> offset = strmOfs() == noOffset ? ::String::create("-1") : StrConv::str(strmOfs());
    const Ref<Dictionary> dictionary = dict();
    return ::String::create("@")->concat(offset)->concat(" ")->concat(dictionary ? dictionary->asText() : nullptr);
}

// Deliberate: no stream is equal to anything, so that a merge of resources never takes one for another.
bool Stream::equal(Ref<Value>) const noexcept
{
    return false;
}

StreamObj::StreamObj(Ref<Dictionary> dict, std::uint64_t offset) noexcept
    : ValueObj(kind), _dict(std::move(dict)), _offset(offset)
{
}

StreamObj::StreamObj(Ref<Dictionary> dict, Ref<Interfaces::Stripe> data) noexcept
    : ValueObj(kind), _dict(std::move(dict)), _data(std::move(data)), _offset(noOffset)
{
}

StreamObj::~StreamObj() noexcept = default;

Ref<Dictionary> StreamObj::dict() const noexcept
{
    return _dict;
}

Compression StreamObj::compression() const noexcept
{
    if (!_dict)
        return Compression::Unknown;
    switch (readFilterEntry(*_dict).kind) {
    case FilterEntry::Kind::Flate:
        return Compression::Flate;
    case FilterEntry::Kind::None:
    case FilterEntry::Kind::OtherName: // deliberate, so that `Unknown` means no name at all
        return Compression::None;
    case FilterEntry::Kind::NoName:
        break;
    }
    return Compression::Unknown;
}

void StreamObj::strmData(Ref<Interfaces::Stripe> data) noexcept
{
    _data = std::move(data);
    _changed = true;
}

} // namespace Libraries::Files::PDF
