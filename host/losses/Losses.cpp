#include <host/losses/Losses.h>

namespace Host {

std::string_view lossLabel(LossKind kind) noexcept
{
    constexpr const char* labels[] = {
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
        "encryption",
        "comment",
    };
    static_assert(std::size(labels) == lossKindCount);
    return std::size_t(kind) < lossKindCount ? labels[std::size_t(kind)] : "unknown loss";
}

void Losses::add(Loss loss) noexcept
{
    ++_counts[std::size_t(loss.kind)];
    _size += sizeof loss + loss.inFile.size() + loss.written.size();
    _all.push_back(std::move(loss));
}

std::string Losses::summary() const noexcept
{
    std::string summary;
    for (std::size_t i = 0; i < lossKindCount; ++i) {
        const auto kind = LossKind(i);
        if (count(kind) == 0 || kind == LossKind::Comment)
            continue;
        summary += summary.empty() ? "" : ", ";
        summary += lossLabel(kind);
        summary += " (" + std::to_string(count(kind)) + ")";
    }
    return summary;
}

} // namespace Host
