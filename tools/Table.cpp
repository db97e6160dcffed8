#include <tools/Table.h>

#include <platform/Utf8.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <optional>
#include <string_view>

#include <locale.h>

namespace Tools {

namespace {

// Takes a character of UTF-8 from the front of a text, or else a byte; how many columns it is wide. An East Asian one
// takes two, a combining one none. The C library tells, in a locale of Unicode: the user's says nothing about a file.
std::size_t takeCharacter(std::string_view& text)
{
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const std::string_view rest = text;
    char32_t c = 0;
    if (!Utf8::read(text, c)) {
        text = rest.substr(1);
        return 1;
    }
    if (c < 128 || !unicode)
        return 1;
    const locale_t former = uselocale(unicode);
    const int width = wcwidth(static_cast<wchar_t>(c));
    uselocale(former);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

std::size_t widthOf(std::string_view text)
{
    std::size_t width = 0;
    while (!text.empty())
        width += takeCharacter(text);
    return width;
}

// The first characters of a text that is too wide, and "..." after them.
std::string cutTo(const std::string& text, std::size_t width)
{
    if (widthOf(text) <= width)
        return text;
    std::string_view rest = text;
    std::size_t end = 0;
    for (std::size_t used = takeCharacter(rest); used <= width - 3; used += takeCharacter(rest))
        end = text.size() - rest.size();
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
