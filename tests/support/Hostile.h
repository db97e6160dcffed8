#pragma once

#include "FlateData.h"
#include "PdfText.h"

#include <string>
#include <string_view>

// Files of about so many bytes that refer to one thing from many places, so that what they ask for grows faster than
// they do.
namespace Tests::Hostile {

inline std::string repeated(std::string_view text, std::size_t count)
{
    std::string all;
    all.reserve(text.size() * count);
    while (count-- > 0)
        all += text;
    return all;
}

// So many dictionaries in a row, each with a name of its own.
inline std::string kids(std::size_t count, const std::string& entries = "")
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += "<</T(" + std::to_string(i) + ")" + entries + ">>";
    return all;
}

// A form of these fields; the other objects get the ids from 4 on.
inline std::string form(const std::string& fields, const std::vector<std::string>& objects = {})
{
    PdfText file;
    file.pages().object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm 3 0 R>>").object(3, "<</Fields[" + fields + "]>>");
    for (std::size_t i = 0; i < objects.size(); ++i)
        file.object(unsigned(4 + i), objects[i]);
    return file;
}

// A choice with one long text as each of its options.
inline std::string sharedOption(std::size_t size)
{
    const std::string text = "(" + std::string(size / 2, 'x') + ")";
    return form("<</T(a)/FT/Ch/Opt[" + repeated("4 0 R ", size / 12) + "]>>", {text});
}

// Choices that share one list of empty options.
inline std::string sharedOptions(std::size_t size)
{
    return form("<</T(x)/FT/Ch/Opt[" + repeated("()", size / 4) + "]/Kids[" + kids(size / 28) + "]>>");
}

// A value that is one long stream, inherited by many fields, or many times in a list.
inline std::string flateOf(std::size_t size)
{
    const std::string data = compressed(std::string(size, 'v'));
    return "<</Filter/FlateDecode/Length " + std::to_string(data.size()) + ">>\nstream\n" + data + "\nendstream";
}
inline std::string inheritedStream(std::size_t size)
{
    return form("<</T(x)/FT/Tx/V 4 0 R/Kids[" + kids(size / 14) + "]>>", {flateOf(17 << 20)});
}
inline std::string listedStream(std::size_t size)
{
    return form("<</T(x)/FT/Ch/V[" + repeated("4 0 R ", size / 6) + "]>>", {flateOf(17 << 20)});
}

// Radio buttons whose widgets all have the same many states.
inline std::string sharedStates(std::size_t size)
{
    std::string states;
    for (std::size_t i = 0; i < size / 20; ++i)
        states += "/s" + std::to_string(i) + " 0";
    return form("<</T(a)/FT/Btn/Ff 32768/Kids[" + repeated("<</AP 4 0 R>>", size / 26) + "]>>",
        {"<</N 5 0 R>>", "<<" + states + ">>"});
}

// Many fields below a long name.
inline std::string longPaths(std::size_t size)
{
    return form("<</T(" + std::string(4000, 'x') + ")/FT/Tx/Kids[" + kids(size / 14) + "]>>");
}

// Fields that all have the same list of kids.
inline std::string sharedKids(std::size_t size)
{
    return form(kids(size / 50, "/Kids 4 0 R"), {"[" + repeated("2 0 R ", size / 12) + "]"});
}

// Pages of a tree whose nodes all have the same list of kids.
inline std::string sharedPages(std::size_t size)
{
    return PdfText()
        .object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Kids[" + repeated("<</Kids 3 0 R>>", size / 30) + "]>>")
        .object(3, "[" + repeated("4 0 R ", size / 12) + "]")
        .object(4, "<</Type/Page>>");
}

// One page that is listed many times.
inline std::string repeatedPage(std::size_t size)
{
    return PdfText().pages(repeated("3 0 R ", size / 6)).object(3, "<</Type/Page/Contents 4 0 R>>").stream(4, "q Q");
}

// Streams whose data all ends at the same place, each in the data of the one before.
inline std::string overlappingStreams(std::size_t size)
{
    const std::string place(9, '0');
    std::string text = "%PDF-1.7\n";
    std::string table;
    std::vector<std::size_t> lengths;
    const auto add = [&](const std::string& object) {
        char row[32];
        std::snprintf(row, sizeof row, "%010zu 00000 n \n", text.size());
        table += row;
        text += std::to_string(table.size() / 20) + object;
    };
    add(" 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n");
    add(" 0 obj\n<</Kids[]>>\nendobj\n");
    while (text.size() < size / 2) {
        add(" 0 obj\n<</Length " + place + ">>stream\n");
        lengths.push_back(text.size());
    }
    text.append(size / 6, 'x');
    for (const std::size_t data : lengths) {
        const std::string length = std::to_string(text.size() - data);
        text.replace(data - std::string(">>stream\n").size() - length.size(), length.size(), length);
    }
    const std::string end = "trailer\n<</Root 1 0 R>>\nstartxref\n" + std::to_string(text.size() + 18) + "\n%%EOF\n";
    return text + "\nendstream\nendobj\nxref\n0 " + std::to_string(table.size() / 20 + 1)
        + "\n0000000000 65535 f \n" + table + end;
}

// A page beneath which something goes: its resources lead to objects each of which refers twice to the next one.
inline std::string doublingLetterhead(unsigned levels)
{
    PdfText file;
    file.pages("3 0 R").object(3, "<</Type/Page/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>").stream(4, "q Q");
    for (unsigned i = 0; i < levels; ++i)
        file.object(5 + i, "[" + repeated(std::to_string(6 + i) + " 0 R ", 2) + "]");
    return file.object(5 + levels, "0");
}

// Pages that share resources of many names, which begin with the letter.
inline std::string sharedNames(std::size_t size, char letter)
{
    const std::size_t count = size / 160;
    std::string names;
    for (std::size_t i = 0; i < size / 20; ++i)
        names += std::string("/") + letter + std::to_string(i) + " 0";
    PdfText file;
    file.stream(3, "q Q").object(4, "<</Font<<" + names + ">>>>");
    std::string list;
    for (std::size_t i = 0; i < count; ++i) {
        file.object(unsigned(5 + i), "<</Type/Page/Resources 4 0 R/Contents 3 0 R>>");
        list += std::to_string(5 + i) + " 0 R ";
    }
    return file.pages(list);
}

} // namespace Tests::Hostile
