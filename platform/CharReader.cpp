#include <platform/CharReader.h>

Ref<CharReader> CharReader::create(Ref<Interfaces::Stream> stream, std::size_t) noexcept
{
    Ref<Interfaces::Stripe> stripe = stream.cast<Interfaces::Stripe>();
    return stripe ? make<CharReader>(std::move(stripe)) : nullptr;
}

CharReader::Got CharReader::next(std::uint32_t& c) noexcept
{
    BufferDesc area = BufferDesc::plain(&c);
    if (_stripe->read(area, 1, waitForever) == 1)
        return Got::Character;
    return _stripe->tell() < _stripe->size() ? Got::Failure : Got::End;
}

Ref<String> CharReader::readLine() noexcept
{
    _line.clear();
    std::uint32_t c = 0;
    for (;;) {
        const Got got = next(c);
        if (got == Got::Failure || (got == Got::End && _line.empty()))
            return nullptr;
        if (got == Got::End || c == '\n')
            break;
        if (c == '\r') {
            const Got peeked = next(c);
            if (peeked == Got::Failure)
                return nullptr;
            if (peeked == Got::Character && c != '\n') {
                const std::uint64_t back = _stripe->tell() - 1;
                if (_stripe->seek(back) != back)
                    return nullptr;
            }
            break;
        }
        _line += char32_t(c);
    }
    return String::create(_line);
}
