#pragma once

#include <document/Document.h>

#include "TestStripe.h"

#include <map>
#include <string>

namespace Tests {

using namespace Libraries::Files;

// Builds the text of a PDF file and works out its offsets, table and trailer.
class PdfText {
public:
    explicit PdfText(std::string ending = "\n", std::string version = "1.7")
        : _ending(std::move(ending)), _text("%PDF-" + version + _ending)
    {
    }

    // An indirect object: its value as it is in the file. Ids that are left out are free.
    PdfText& object(unsigned id, const std::string& value)
    {
        _offsets[id] = _text.size();
        _text += std::to_string(id) + " 0 obj" + _ending + value + _ending + "endobj" + _ending;
        return *this;
    }
    // A stream; `entries` go into its dictionary, after its Length.
    PdfText& stream(unsigned id, const std::string& data, const std::string& entries = "")
    {
        return object(id, "<< /Length " + std::to_string(data.size()) + " " + entries + " >>" + _ending + "stream"
                              + _ending + data + _ending + "endstream");
    }
    // Catalog 1, and page tree 2, which has the given objects as its pages, and `entries` besides them.
    PdfText& pages(const std::string& kids = "", const std::string& entries = "/Count 0")
    {
        return object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [ " + kids + " ] " + entries + " >>");
    }
    // Entries of the trailer besides Root.
    PdfText& trailer(const std::string& entries)
    {
        _trailer = entries;
        return *this;
    }
    PdfText& root(const std::string& reference)
    {
        _root = reference;
        return *this;
    }

    operator std::string() const
    {
        const unsigned last = _offsets.empty() ? 0 : _offsets.rbegin()->first;
        std::string text = _text + "xref" + _ending + "0 " + std::to_string(last + 1) + _ending;
        for (unsigned id = 0; id <= last; ++id)
            text += row(id);
        const std::string root = _root.empty() ? "" : "/Root " + _root;
        text += "trailer" + _ending + "<< " + root + " " + _trailer + " >>" + _ending;
        return text + "startxref" + _ending + std::to_string(_text.size()) + _ending + "%%EOF" + _ending;
    }

private:
    std::string row(unsigned id) const
    {
        const auto found = _offsets.find(id);
        char text[32];
        if (found == _offsets.end())
            std::snprintf(text, sizeof(text), "%010u %05u f", 0u, id == 0 ? 65535u : 0u);
        else
            std::snprintf(text, sizeof(text), "%010zu %05u n", found->second, 0u);
        return text + std::string(_ending.size() < 2 ? " " : "") + _ending;
    }

    std::string _ending;
    std::string _text;
    std::string _trailer;
    std::string _root = "1 0 R";
    std::map<unsigned, std::size_t> _offsets;
};

inline Ref<PDF::Document> open(const std::string& bytes)
{
    return PDF::Document::create(make<TestStripe>(bytes));
}

// The text with its first `from` replaced; the fixture is at fault when there is none.
inline std::string damaged(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t place = text.find(from);
    if (place == text.npos)
        std::abort();
    return text.replace(place, from.size(), to);
}

} // namespace Tests
