#include <import/Warnings.h>

#include <host/base/Utf8.h>

#include <algorithm>

namespace Import {

namespace {

// What such a warning begins with, and why nothing is lost.
constexpr std::string_view harmless[] = {
    // Of a repeated key the core keeps the last value, too.
    "dictionary has duplicated key ",
    // Objects are found by the table.
    "reported number of objects (",
    // A row of another length, with the same three words.
    "accepting invalid xref table entry",
    "extraneous whitespace seen before xref",
    // "#" stays what it is.
    "name with stray # ",
    // The end of the data is checked in any case.
    "stream keyword followed by ",
    "stream keyword not followed by proper line terminator",
    // An object that has no value, and a row that leads to none, are null.
    "empty object treated as null",
    "object has offset 0",
    // The rows that Index counts are all there.
    "Cross-reference stream data has the wrong size; ",
    // It takes part in the password, which was right.
    "invalid /ID in trailer dictionary",
};

} // namespace

bool losesNothing(const QPDFExc& warning)
{
    return std::any_of(std::begin(harmless), std::end(harmless),
        [&](std::string_view start) { return warning.getMessageDetail().starts_with(start); });
}

std::string lineOf(std::string_view text)
{
    std::string line(text);
    const bool isUtf8 = static_cast<bool>(Host::fromUtf8(text));
    for (char& c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' || byte == 127)
            c = ' ';
        else if (byte > 127 && !isUtf8)
            c = '?';
    }
    return line;
}

std::string messageOf(const QPDFExc& exception)
{
    // Where it has no name for a file, its descriptions begin with what would follow that.
    std::string place = exception.getObject();
    place.erase(0, std::min(place.find_first_not_of(", "), place.size()));
    if (exception.getFilePosition() > 0)
        place += (place.empty() ? "" : ", ") + ("offset " + std::to_string(exception.getFilePosition()));
    return lineOf(place.empty() ? exception.getMessageDetail() : place + ": " + exception.getMessageDetail());
}

} // namespace Import
