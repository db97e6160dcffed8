#include <host/pages/Edit.h>

#include <host/pages/Geometry.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/NumberObj.h>
#include <values/Stream.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

Ref<Value> nameValue(const char* name) noexcept
{
    return Name::create(::String::create(name));
}

Ref<Value> numberValue(double number) noexcept
{
    const std::string text = decimalText(number);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string fraction = point < text.size() ? text.substr(point + 1) : "0";
    return make<NumberObj>(std::int64_t(std::stoll(text.substr(0, point))), std::uint64_t(std::stoull(fraction)));
}

Ref<Value> arrayOf(const std::vector<double>& numbers) noexcept
{
    std::vector<Ref<Value>> values;
    for (const double number : numbers)
        values.push_back(numberValue(number));
    return Array::create(values);
}

Ref<Value> contentStream(std::string_view text) noexcept
{
    return createStream(Dictionary::create(), std::vector<std::uint8_t>(text.begin(), text.end()));
}

} // namespace Host
