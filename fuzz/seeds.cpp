#include "SeedFiles.h"
#ifdef FILES_PDF_IMPORT
#include "ImportSeeds.h"
#endif

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

// make-seeds FOLDER: fills a folder for each target with inputs to begin with, the same ones each time. Those in
// TARGET-deep go to the limits of the stack, those in TARGET-long to those of memory.

namespace {

class Folder {
public:
    Folder(const std::filesystem::path& folder, const char* name) : _path(folder / name)
    {
        std::filesystem::create_directories(_path);
    }

    void add(const std::string& name, const std::string& bytes)
    {
        std::ofstream file(_path / name, std::ios::binary);
        file << bytes;
        isGood = isGood && file.flush();
    }

    static inline bool isGood = true;

private:
    const std::filesystem::path _path;
};

// One operation of the target `edit`, as it reads it.
std::string operation(unsigned number, unsigned a = 0, unsigned b = 0, unsigned c = 0)
{
    return {char(number), char(a), char(b), char(c)};
}

std::string edit(const std::string& operations, const std::string& files)
{
    return char(operations.size() / 4) + operations + files;
}

void addEditing(const std::filesystem::path& folder)
{
    Folder small(folder, "edit");
    std::string every;
    for (unsigned i = 0; i < 16; ++i) {
        const unsigned number = (i + 8) % 16; // the recompression to none comes first
        every += operation(number, number % 3, 3 * number, number);
    }
    for (const auto& [name, file] : Fuzz::smallFiles()) {
        small.add(name + "-every", edit(every, file + Fuzz::letterhead()));
        for (unsigned number = 0; number < 16; ++number)
            small.add(name + "-" + std::to_string(number),
                edit(operation(number, 1, 7, 2) + operation(number, 0, 200, 1), file + Fuzz::letterhead()));
    }
    for (const auto& [name, file] : Fuzz::smallFiles())
        for (unsigned which = 0; which < 8; ++which) {
            constexpr unsigned place = 224;
            const std::string twice = operation(place, 9 * which, 8 * which, which) + operation(place, 1, 8, 7 * which);
            small.add(name + "-place-" + std::to_string(which), edit(twice, file + Fuzz::letterhead()));
        }
    for (const char* const name : {"form", "tagged"})
        for (unsigned which = 0; which < 8; ++which) {
            constexpr unsigned flatten = 192;
            small.add(std::string(name) + "-flatten-" + std::to_string(which),
                edit(operation(flatten, which, which / 2, which), Fuzz::smallFiles()[name]));
        }
    for (unsigned variant = 0; variant < 4; ++variant)
        for (const unsigned way : {0u, 1u}) { // of setting values
            std::string fillAll;
            for (unsigned field = 0; field < 14; ++field)
                fillAll += operation(way, field, 1 + variant, variant);
            small.add("fill-" + std::to_string(way) + "-" + std::to_string(variant),
                edit(fillAll, Fuzz::smallFiles()["form"]));
        }
    Folder deep(folder, "edit-deep");
    for (const auto& [name, file] : Fuzz::deepFiles())
        deep.add(name, edit(every, file));
    Folder large(folder, "edit-long");
    for (const auto& [name, file] : Fuzz::longFiles())
        large.add(name, edit(every, file));
}

// Forms of one field, as the target `looks` reads them.
void addLooks(const std::filesystem::path& folder)
{
    Folder looks(folder, "looks");
    const std::string widgets[] = {"/Ff 4096 /DA (/F 12 Tf 1 0 0 rg) /Q 1 /MK << /BC [ 1 0 0 ] /BG [ 0.5 ] /R 90 >>",
        "/Ff 16777216 /MaxLen 9 /BS << /W 3 /S /I >>", "/Ff 8192 /DA (/Helv -1 Tf)", "/FT /Ch /Opt [ (a) [ (b) (c) ] ]",
        "/FT /Ch /Ff 131072 /Opt [ (a) ] /Border [ 0 0 9 ]", "/FT /Btn /MK << /CA (8) >>",
        "/FT /Btn /Ff 32768 /MK << /BG [ 1 1 1 0 ] >> /BS << /S /D /D [ 2 1 ] >>", "/Rect [ 5 5 0.5 0.25 ]"};
    const std::string fonts[] = {"/Subtype /Type1 /FirstChar 65 /Widths [ 500 600 ] /Encoding /WinAnsiEncoding",
        "/Subtype /TrueType /FirstChar 97 /Widths [ 500 600 ] /Encoding << /Differences [ 65 /a /Lslash ] >>",
        "/Subtype /Type0 /Encoding /Identity-H "
        "/DescendantFonts [ << /FontDescriptor 5 0 R /W [ 1 [ 5 ] 65 90 500 ] >> ]"};
    const std::string map = "1 begincodespacerange <00> <FF> endcodespacerange "
                            "2 beginbfchar <41> <0041> <0042> <D83DDE00> endbfchar 1 beginbfrange <0043> <0049> <0043> endbfrange";
    unsigned number = 0;
    for (const std::string& widget : widgets)
        for (const std::string& font : fonts) {
            const std::string value = number % 2 == 0 ? "AB ab\n\xC5\x81\xE6\x97\xA5 (x)" : "a";
            looks.add(std::to_string(number),
                std::string{char(number % 4), char(value.size())} + value + widget + '\0' + font + '\0'
                    + "/Flags 32 /FontBBox [ -100 -200 900 900 ] /FontFile2 7 0 R" + '\0' + map + '\0'
                    + std::string("\0\1\0\0\0\1", 6));
            ++number;
        }
}

// Files of values. The first byte says what kind of file the target `values` reads.
void addValues(const std::filesystem::path& folder)
{
    const std::string fdf = "%FDF-1.2\n1 0 obj << /FDF << /Fields [ << /T (a) /Kids [ "
                            "<< /T <FEFF0142> /V (\\(x\\)\\\n) >> << /T (b) /V /On#20 >> 2 0 R ] >> ] "
                            "/Encoding /utf-8 >> >> endobj\n"
                            "2 0 obj << /V [ (x) 3 0 R 1.10 ] /T (c) >> endobj 3 0 obj (y) endobj\n"
                            "4 0 obj << >> stream\n]] endstream endobj\ntrailer << /Root 1 0 R >>\n";
    const std::string xfdf = "<?xml version='1.0' encoding='UTF-8'?><xfdf xmlns='http://ns.adobe.com/xfdf/'><fields>"
                             "<field name='a'><field name='b'><value>&lt;&#x142;<![CDATA[&]]></value><value/></field>"
                             "</field><field name='c&quot;'><value> </value></field></fields></xfdf>";
    const std::string csv = "a,b,b,\"c,\"\"\"\r\n1,x,y,\"two\r\nlines\"\n\n,,,\n2,\"x\"y,\n";
    const std::string json = "{\"a\": 1.10, \"b\": [\"x\", -0], \"c\": true, \"d\": null, \"e\": \"\\u0142\\\"\"}";
    Folder small(folder, "values");
    Folder large(folder, "values-long");
    const std::string files[] = {fdf, xfdf, csv, json};
    const std::string begins[] = {"1 0 obj << /FDF << /Fields [ ", "<xfdf><fields>", "\"", "{\"a\":"};
    const std::string levels[] = {"<< /T (a) /Kids [ ", "<field name='a'>", "\n\"\"", "["};
    for (std::size_t kind = 0; kind < std::size(files); ++kind) {
        const std::string name = std::to_string(kind);
        small.add(name, char(kind) + files[kind]);
        small.add(name + "-half", char(kind) + files[kind].substr(0, files[kind].size() / 2));
        std::string deep = char(kind) + begins[kind];
        while (deep.size() < 1'000'000)
            deep += levels[kind];
        large.add(name, deep);
    }
}

// Inputs whose bytes count through what the target does: first small numbers, then large ones.
void addCounting(const std::filesystem::path& folder, const char* target)
{
    Folder small(folder, target);
    for (unsigned start = 0; start < 24; ++start) {
        std::string bytes;
        std::uint32_t state = start;
        for (unsigned i = 0; i < 200; ++i) {
            state = state * 1664525u + 1013904223u;
            const unsigned many = state >> 24;
            bytes += char(start % 2 == 0 ? many % 32 : many);
        }
        small.add(std::to_string(start), char(start) + bytes);
    }
    Folder(folder, (std::string(target) + "-long").c_str()).add("long", std::string(1'000'000, '\3'));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-seeds FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const std::pair<const char*, Fuzz::SeedFiles> folders[]
        = {{"open", Fuzz::smallFiles()}, {"open-deep", Fuzz::deepFiles()}, {"open-long", Fuzz::longFiles()}};
    for (const auto& [name, files] : folders)
        for (const auto& [file, bytes] : files)
            Folder(folder, name).add(file, bytes);
#ifdef FILES_PDF_IMPORT
    for (const auto& [file, bytes] : Fuzz::importFiles())
        Folder(folder, "import").add(file, bytes);
#endif
    addEditing(folder);
    addCounting(folder, "decode");
    addLooks(folder);
    addCounting(folder, "stripes");
    addCounting(folder, "text");
    addValues(folder);
    return Folder::isGood ? 0 : 1;
}
