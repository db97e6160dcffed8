#include "Repacking.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>

// How inputs with PDF files in them are changed: as any others, but mostly the tables of the files, and often the
// lengths of their streams, are brought up to date then. Otherwise hardly a change would come as far as the objects.

extern "C" {

// libFuzzer's own changes. The size afterwards.
std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t largest);
// What libFuzzer calls in place of them, if it is there.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t largest, unsigned seed);

} // extern "C"

namespace {

constexpr std::size_t none = std::string::npos;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The number that ends before `end`, and where it begins; none when there is no digit.
std::optional<unsigned> numberBefore(const std::string& text, std::size_t& end)
{
    std::size_t start = end;
    while (start > 0 && isDigit(text[start - 1]) && end - start < 6)
        --start;
    if (start == end)
        return std::nullopt;
    const unsigned number = static_cast<unsigned>(std::stoul(text.substr(start, end - start)));
    end = start;
    return number;
}

struct Entry {
    std::size_t offset;
    unsigned generation;
};

// The objects that stand in the text, by their ids.
std::map<unsigned, Entry> objectsIn(const std::string& text)
{
    constexpr unsigned mostIds = 300;
    std::map<unsigned, Entry> objects;
    for (std::size_t place = text.find(" obj"); place != none; place = text.find(" obj", place + 4)) {
        std::size_t start = place;
        const std::optional<unsigned> generation = numberBefore(text, start);
        if (!generation || start == 0 || text[start - 1] != ' ')
            continue;
        --start;
        const std::optional<unsigned> id = numberBefore(text, start);
        if (id && *id < mostIds)
            objects[*id] = {start, *generation};
    }
    return objects;
}

// Puts the length of each stream into its dictionary, where that has a number for it.
void updateLengths(std::string& text)
{
    for (std::size_t place = text.find("stream\n"); place != none; place = text.find("stream\n", place + 1)) {
        const std::size_t end = text.find("endstream", place + 7);
        const std::size_t key = text.rfind("/Length ", place);
        const bool isOpening = place < 3 || text.compare(place - 3, 3, "end") != 0;
        if (!isOpening || end == none || key == none || !isDigit(text[key + 8]))
            continue;
        const std::size_t size = end - place - 7;
        const std::size_t digits = text.find_first_not_of("0123456789", key + 8) - key - 8;
        const std::string length = std::to_string(size == 0 ? 0 : size - 1); // without the line ending behind it
        text.replace(key + 8, digits, length);
        place += length.size() - digits;
    }
}

std::string tableOf(const std::map<unsigned, Entry>& objects, const std::string& ending)
{
    const unsigned count = objects.empty() ? 1 : objects.rbegin()->first + 1;
    std::string table = "xref" + ending + "0 " + std::to_string(count) + ending;
    for (unsigned id = 0; id < count; ++id) {
        const auto found = objects.find(id);
        const Entry entry = found == objects.end() ? Entry{0, 65535} : found->second;
        char row[40];
        std::snprintf(row, sizeof(row), "%010zu %05u %c", entry.offset, entry.generation,
            found == objects.end() ? 'f' : 'n');
        table += row + ending;
    }
    return table;
}

// The file with a table that fits its objects; as it is when it has no place for one.
std::string updated(std::string file, bool hasNewLengths)
{
    const std::size_t trailer = file.rfind("trailer");
    const std::size_t start = file.rfind("startxref");
    const std::size_t table = trailer == none ? none : file.rfind("xref", trailer);
    if (table == none || start == none || start < trailer)
        return file;
    const std::size_t lineEnd = std::min(file.find_first_of("\r\n"), file.size());
    const std::string ending = file.substr(lineEnd, file.compare(lineEnd, 2, "\r\n") == 0 ? 2 : 1);
    std::string objects = file.substr(0, table);
    if (hasNewLengths)
        updateLengths(objects);
    return objects + tableOf(objectsIn(objects), ending) + file.substr(trailer, start - trailer) + "startxref" + ending
        + std::to_string(objects.size()) + ending + "%%EOF" + ending;
}

} // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t largest, unsigned seed)
{
    size = LLVMFuzzerMutate(bytes, size, largest);
    constexpr unsigned leftAsItIs = 4; // one input of so many
    if (seed % leftAsItIs == 0)
        return size;
    const std::string input(reinterpret_cast<const char*>(bytes), size);
    std::size_t start = input.find("%PDF-");
    std::string result = input.substr(0, start);
    while (start != none) {
        const std::size_t end = input.find("%PDF-", input.find("%%EOF", start));
        const std::string file = input.substr(start, end == none ? end : end - start);
        result += file.find("/Type /XRef") == none ? updated(file, seed % 3 == 0) : Fuzz::repacked(file);
        start = end;
    }
    if (result.size() > largest)
        return size;
    std::memcpy(bytes, result.data(), result.size());
    return result.size();
}
