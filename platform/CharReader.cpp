#include <platform/CharReader.h>

Ref<CharReader> CharReader::create(Ref<Interfaces::Stream> stream, std::size_t) noexcept
{
    Ref<Interfaces::Stripe> stripe = stream.cast<Interfaces::Stripe>();
    return stripe ? make<CharReader>(std::move(stripe)) : nullptr;
}

CharReader::Got CharReader::next(std::uint32_t& c) noexcept
{
    if (readElement(*_stripe, c))
        return Got::Character;
    return _stripe->tell() < _stripe->size() ? Got::Failure : Got::End;
}

// Behind a CR: passes a LF, and gives back anything else.
bool CharReader::passLineFeed() noexcept
{
    std::uint32_t c = 0;
    const Got got = next(c);
    if (got != Got::Character || c == '\n')
        return got != Got::Failure;
    const std::uint64_t back = _stripe->tell() - 1;
    return _stripe->seek(back) == back;
}

Ref<String> CharReader::readLine() noexcept
{
    std::u32string line;
    return readLine(line) ? String::create(line) : nullptr;
}

bool CharReader::readPieces(std::u32string& line, std::size_t count) noexcept
{
    line.clear();
    std::size_t pieces = 0;
    std::uint32_t c = 0;
    for (;;) {
        const Got got = next(c);
        if (got == Got::Failure || (got == Got::End && line.empty()))
            return false;
        if (got == Got::End || c == '\n')
            break;
        if (c == '\r') {
            if (!passLineFeed())
                return false;
            break;
        }
        if (c == ' ' && !line.empty() && line.back() != U' ' && ++pieces == count)
            break;
        line += char32_t(c);
    }
    return true;
}
