#include <platform/CharReader.h>

#include <platform/ElementReader.h>

Ref<CharReader> CharReader::create(Ref<Interfaces::Stream> stream, std::size_t) noexcept
{
    Ref<Interfaces::Stripe> stripe = stream.cast<Interfaces::Stripe>();
    return stripe ? make<CharReader>(std::move(stripe)) : nullptr;
}

Ref<String> CharReader::readLine() noexcept
{
    ElementReader elements(*_stripe);
    std::u32string line;
    const bool isRead = elements.readLine(line);
    return elements.settle() && isRead ? String::create(line) : nullptr;
}
