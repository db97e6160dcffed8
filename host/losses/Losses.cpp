#include <host/losses/Losses.h>

namespace Host {

std::string_view lossWords(LossKind kind) noexcept
{
    constexpr const char* words[] = {
        "leading zeros of a fraction",
        "sign of a number between -1 and 0",
        "raw bytes of a string",
        "octal bytes of a string",
        "doubled backslashes of a string",
        "backslash of a string, when opened again",
        "brackets in trailer, when opened again",
        "odd hexadecimal digit",
        "word glued to a bracket",
        "reference as an object",
        "value found too early",
        "repeated key",
        "other value",
        "data of a stream",
        "object that can't be written",
        "object of a second subsection",
        "earlier revision",
        "objects in streams",
        "reference to a lost object",
        "object with another row of the table",
        "encryption",
        "comment",
    };
    static_assert(std::size(words) == lossKindCount);
    return std::size_t(kind) < lossKindCount ? words[std::size_t(kind)] : "no kind of loss";
}

void Losses::add(Loss loss) noexcept
{
    ++_counts[std::size_t(loss.kind)];
    _all.push_back(std::move(loss));
}

std::string Losses::summary() const noexcept
{
    std::string words;
    for (std::size_t i = 0; i < lossKindCount; ++i) {
        const auto kind = LossKind(i);
        if (count(kind) == 0 || kind == LossKind::Comment)
            continue;
        words += words.empty() ? "" : ", ";
        words += lossWords(kind);
        words += " (" + std::to_string(count(kind)) + ")";
    }
    return words;
}

} // namespace Host
