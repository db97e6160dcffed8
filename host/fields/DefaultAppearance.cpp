#include <host/fields/DefaultAppearance.h>

#include <host/base/Characters.h>
#include <host/fields/ContentText.h>
#include <host/fonts/PostScriptReader.h>
#include <platform/Limits.h>

#include <optional>
#include <vector>

namespace Host {

namespace {

// Absent for what is no number of a PDF file.
std::optional<double> numberOf(const PostScriptPart& part)
{
    std::string_view text = part.text;
    if (part.kind != PostScriptPart::Kind::Word || text.empty())
        return {};
    if (text[0] == '+')
        text.remove_prefix(1);
    double value = 0;
    const auto [end, failure] = std::from_chars(
        text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    const bool isWhole = failure == std::errc() && end == text.data() + text.size() && std::isfinite(value);
    return isWhole ? std::optional(value) : std::nullopt;
}

// How many numbers an operator of color takes; 0 for any other operator.
std::size_t componentsOf(const std::string& operation)
{
    return operation == "g" ? 1 : operation == "rg" ? 3 : operation == "k" ? 4 : 0;
}

} // namespace

DefaultAppearance DefaultAppearance::read(std::string_view text) noexcept
{
    DefaultAppearance result;
    PostScriptReader reader(text);
    std::string name;
    std::vector<double> numbers;
    for (PostScriptPart part = reader.next(); part.kind != PostScriptPart::Kind::End; part = reader.next()) {
        if (part.kind == PostScriptPart::Kind::Name) {
            name = decodedName(part.text);
            continue;
        }
        if (const std::optional<double> number = numberOf(part)) {
            numbers.push_back(*number);
            continue;
        }
        const std::size_t components = part.kind == PostScriptPart::Kind::Word ? componentsOf(part.text) : 0;
        if (part.isWord("Tf")) {
            const double size = numbers.empty() ? 0 : numbers.back();
            result.font = name;
            const bool isUsable = size >= Limits::minTextSize && size <= Limits::maxTextSize;
            result.size = isUsable ? size : 0;
            result.hasOddSize = numbers.empty() || (!isUsable && size != 0);
        } else if (components != 0 && numbers.size() >= components) {
            result.color.clear();
            for (std::size_t i = numbers.size() - components; i < numbers.size(); ++i)
                result.color += ContentText::number(numbers[i]) + " ";
            result.color += part.text;
        }
        numbers.clear();
    }
    return result;
}

} // namespace Host
