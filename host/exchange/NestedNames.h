#pragma once

#include <host/fields/FormFields.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

// For files that nest fields by their names, as FDF and XFDF do.

// The parts of a path between its points, in which no part is empty. After some levels the rest is one part: deeper
// files nobody reads, and a reader joins the parts with points in any case.
inline std::vector<std::string_view> partialNames(std::string_view path)
{
    constexpr std::size_t maxLevels = 32;
    std::vector<std::string_view> names;
    while (names.size() + 1 < maxLevels) {
        const std::size_t point = std::min(path.find('.'), path.size());
        const std::string_view rest = path.substr(std::min(point + 1, path.size()));
        if (point == 0 || rest.empty() || rest.front() == '.')
            break;
        names.push_back(path.substr(0, point));
        path = rest;
    }
    names.push_back(path);
    return names;
}

// Writes fields, one below the other where they share the beginning of their path: `open` is called with the name of a
// field that has others below it, `write` with the last part of the name of each field, and the field, and `close`
// after the last one below.
template <class Open, class Write, class Close>
void writeNested(const std::vector<const FormField*>& fields, Open open, Write write, Close close)
{
    std::vector<std::string_view> above;
    const auto closeDownTo = [&](std::size_t level) {
        for (; above.size() > level; above.pop_back())
            close();
    };
    for (const FormField* field : fields) {
        const std::vector<std::string_view> names = partialNames(field->path);
        const auto last = names.end() - 1;
        closeDownTo(std::size_t(std::mismatch(above.begin(), above.end(), names.begin(), last).first - above.begin()));
        for (std::size_t level = above.size(); names.begin() + std::ptrdiff_t(level) != last; ++level) {
            open(names[level]);
            above.push_back(names[level]);
        }
        write(*last, *field);
    }
    closeDownTo(0);
}

} // namespace Host
