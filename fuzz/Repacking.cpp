#include "Repacking.h"

#include <map>
#include <optional>

namespace Fuzz {

namespace {

constexpr std::size_t none = std::string::npos;
constexpr unsigned mostIds = 300;

struct Row {
    unsigned kind;
    std::size_t first;
    unsigned second;
};

using Rows = std::map<unsigned, Row>;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The number at the place, of six digits at most, and what follows it; none when there is no digit.
std::optional<unsigned> numberAt(const std::string& text, std::size_t& place)
{
    const std::size_t start = place;
    while (place < text.size() && isDigit(text[place]) && place - start < 6)
        ++place;
    if (place == start)
        return std::nullopt;
    return static_cast<unsigned>(std::stoul(text.substr(start, place - start)));
}

// A stream's parts in the text of a file.
struct Stream {
    std::size_t dictionary; // where it begins
    std::size_t data;
    std::size_t end; // of the data
};

// The stream whose dictionary has the words, from the place on.
std::optional<Stream> findStream(const std::string& text, const char* words, std::size_t place)
{
    const std::size_t found = text.find(words, place);
    const std::size_t dictionary = found == none ? none : text.rfind("<<", found);
    const std::size_t keyword = text.find("stream\n", found);
    const std::size_t end = text.find("\nendstream", keyword);
    if (found == none || dictionary == none || dictionary < place || keyword == none || end == none)
        return std::nullopt;
    return Stream{dictionary, keyword + 7, std::max(end, keyword + 7)};
}

// Puts a number where the dictionary has one under the key.
void setNumber(std::string& dictionary, const char* key, std::size_t number)
{
    const std::string start = std::string(key) + " ";
    std::size_t place = dictionary.find(start);
    if (place == none)
        return;
    place += start.size();
    std::size_t end = place;
    numberAt(dictionary, end);
    dictionary.replace(place, end - place, std::to_string(number));
}

std::string replaced(const std::string& text, const Stream& stream, const std::string& data,
    std::initializer_list<std::pair<const char*, std::size_t>> numbers)
{
    std::string dictionary = text.substr(stream.dictionary, stream.data - stream.dictionary);
    setNumber(dictionary, "/Length", data.size());
    for (const auto& [key, number] : numbers)
        setNumber(dictionary, key, number);
    return text.substr(0, stream.dictionary) + dictionary + data + text.substr(stream.end);
}

// Lists what the values of an object stream say that they are.
std::string relisted(const std::string& text, const Stream& stream, Rows& rows)
{
    const std::string data = text.substr(stream.data, stream.end - stream.data);
    const std::size_t start = data.find('%');
    const std::string values = start == none ? "" : data.substr(start);
    std::size_t header = text.rfind("\n", stream.dictionary - 2);
    header = header == none ? 0 : header + 1;
    const unsigned id = numberAt(text, header).value_or(0);
    std::string list;
    unsigned count = 0;
    for (std::size_t place = values.find('%'); place != none; place = values.find('%', place + 1)) {
        std::size_t end = place + 1;
        const std::optional<unsigned> member = numberAt(values, end);
        if (!member || *member >= mostIds)
            continue;
        list += std::to_string(*member) + " " + std::to_string(place) + " ";
        rows[*member] = {2, id, count++};
    }
    return replaced(text, stream, list + values, {{"/N", count}, {"/First", list.size()}});
}

void addObjects(const std::string& text, Rows& rows)
{
    for (std::size_t line = text.find('\n'); line != none; line = text.find('\n', line + 1)) {
        std::size_t place = line + 1;
        const std::optional<unsigned> id = numberAt(text, place);
        if (id && *id < mostIds && text.compare(place, 6, " 0 obj") == 0)
            rows[*id] = {1, line + 1, 0};
    }
}

std::string bytesOf(const Row& row)
{
    std::string bytes(1, char(row.kind));
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += char(row.first >> shift);
    return bytes + char(row.second >> 8) + char(row.second);
}

} // namespace

std::string repacked(std::string file)
{
    Rows rows;
    for (std::size_t place = 0; const std::optional<Stream> stream = findStream(file, "/Type /ObjStm", place);) {
        file = relisted(file, *stream, rows);
        place = file.find("\nendstream", stream->data);
    }
    const std::optional<Stream> table = findStream(file, "/Type /XRef", 0);
    const std::size_t start = table ? file.rfind('\n', file.rfind(" obj", table->dictionary)) : none;
    if (start == none)
        return file;
    addObjects(file.substr(0, table->dictionary), rows);
    const unsigned last = rows.empty() ? 0 : rows.rbegin()->first;
    std::string data;
    for (unsigned id = 0; id <= last; ++id)
        data += bytesOf(rows.count(id) != 0 ? rows[id] : Row{0, 0, 65535});
    file = replaced(file, *table, data, {{"/Size", last + 1}});
    const std::size_t end = file.find("startxref\n", start);
    return file.substr(0, end) + "startxref\n" + std::to_string(start + 1) + "\n%%EOF\n";
}

} // namespace Fuzz
