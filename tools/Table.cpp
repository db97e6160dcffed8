#include <tools/Table.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace Tools {

namespace {

// In characters of UTF-8; each is taken to be one column wide.
std::size_t widthOf(const std::string& text)
{
    return std::size_t(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// The first characters of a text that is too wide, and "..." after them.
std::string cutTo(const std::string& text, std::size_t width)
{
    if (widthOf(text) <= width)
        return text;
    std::size_t end = 0;
    for (std::size_t left = width - 3; end < text.size() && (left > 0 || (text[end] & 0xC0) == 0x80); ++end)
        left -= (text[end] & 0xC0) != 0x80;
    return text.substr(0, end) + "...";
}

// How many columns a line may take; none where standard output is no terminal.
std::optional<std::size_t> terminalWidth()
{
    struct winsize size = {};
    if (!isatty(STDOUT_FILENO))
        return {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

constexpr std::size_t tableGap = 2; // between columns

// Takes from the widest column, of equal ones the last, until a row fits.
void narrow(std::vector<std::size_t>& widths, std::size_t terminal)
{
    constexpr std::size_t least = 6;
    std::size_t total = tableGap * (widths.size() - 1);
    for (std::size_t& width : widths)
        total += width = std::min(width, terminal);
    for (; total > terminal; --total) {
        const auto widest = std::max_element(widths.rbegin(), widths.rend());
        if (*widest <= least)
            return;
        --*widest;
    }
}

} // namespace

void printTable(const std::vector<std::vector<std::string>>& rows)
{
    constexpr std::size_t widest = 200;
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], std::min(widthOf(row[i]), widest));
    const auto terminal = terminalWidth();
    if (terminal)
        narrow(widths, *terminal);
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string cell = terminal ? cutTo(row[i], widths[i]) : row[i];
            line += cell + std::string(std::max(widths[i], widthOf(cell)) - widthOf(cell) + tableGap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        std::printf("%s\n", line.c_str());
    }
}

} // namespace Tools
