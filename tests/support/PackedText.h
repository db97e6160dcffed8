#pragma once

#include <map>
#include <string>
#include <vector>

namespace Tests {

// Builds the text of a PDF file with object streams and a cross-reference stream, none of them compressed, and works
// out its offsets, lists and rows.
class PackedText {
public:
    struct Member {
        unsigned id;
        std::string value;
    };

    // An object that is in no stream: its value as the file has it.
    PackedText& object(unsigned id, const std::string& value)
    {
        _rows[id] = {1, _text.size(), 0};
        _text += std::to_string(id) + " 0 obj\n" + value + "\nendobj\n";
        return *this;
    }
    PackedText& stream(unsigned id, const std::string& data, const std::string& entries = "")
    {
        return object(
            id, "<< /Length " + std::to_string(data.size()) + " " + entries + " >>\nstream\n" + data + "\nendstream");
    }
    // An object stream; `entries` go into its dictionary.
    PackedText& packed(unsigned id, const std::vector<Member>& members, const std::string& entries = "")
    {
        std::string list;
        std::string values;
        unsigned index = 0;
        for (const Member& member : members) {
            list += std::to_string(member.id) + " " + std::to_string(values.size()) + " ";
            values += member.value + "\n";
            _rows[member.id] = {2, id, index++};
        }
        return stream(id, list + values,
            "/Type /ObjStm /N " + std::to_string(members.size()) + " /First " + std::to_string(list.size()) + " "
                + entries);
    }
    // Catalog 1 and page tree 2, in the object stream 3.
    PackedText& pages()
    {
        return packed(3, {{1, "<< /Type /Catalog /Pages 2 0 R >>"}, {2, "<< /Type /Pages /Kids [ ] /Count 0 >>"}});
    }
    // Entries of the trailer besides Root.
    PackedText& trailer(const std::string& entries)
    {
        _trailer = entries;
        return *this;
    }
    // A row of the table that says something else than the truth: its kind and its two fields.
    PackedText& row(unsigned id, unsigned kind, std::size_t first, unsigned second)
    {
        _rows[id] = {kind, first, second};
        return *this;
    }

    operator std::string() const
    {
        PackedText whole = *this;
        const unsigned id = _rows.empty() ? 1 : _rows.rbegin()->first + 1;
        whole._rows[id] = {1, _text.size(), 0};
        std::string table;
        for (unsigned row = 0; row <= id; ++row)
            table += whole.bytesOf(row);
        return whole
                   .stream(id, table,
                       "/Type /XRef /W [ 1 4 2 ] /Root 1 0 R /Size " + std::to_string(id + 1) + " " + _trailer)
                   ._text
            + "startxref\n" + std::to_string(_text.size()) + "\n%%EOF\n";
    }

private:
    struct Row {
        unsigned kind;
        std::size_t first;
        unsigned second;
    };

    std::string bytesOf(unsigned id) const
    {
        const auto found = _rows.find(id);
        const Row row = found == _rows.end() ? Row{0, 0, 65535} : found->second;
        std::string bytes(1, char(row.kind));
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += char(row.first >> shift);
        return bytes + char(row.second >> 8) + char(row.second);
    }

    std::string _text = "%PDF-1.5\n";
    std::string _trailer;
    std::map<unsigned, Row> _rows;
};

} // namespace Tests
