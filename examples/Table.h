#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace Examples {

// In characters of UTF-8; each is taken to be one column wide.
inline std::size_t widthOf(const std::string& text)
{
    return std::size_t(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// Prints rows of equally many cells. A column is as wide as its widest cell, up to a limit that a few long cells
// break.
inline void printTable(const std::vector<std::vector<std::string>>& rows)
{
    constexpr std::size_t widest = 40;
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], std::min(widthOf(row[i]), widest));
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t width = widthOf(row[i]);
            line += row[i] + std::string(width < widths[i] ? widths[i] - width : 0, ' ') + "  ";
        }
        line.erase(line.find_last_not_of(' ') + 1);
        std::printf("%s\n", line.c_str());
    }
}

} // namespace Examples
