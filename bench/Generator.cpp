#include <bench/Generator.h>

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <vector>

namespace Bench {

namespace {

std::string number(std::size_t value)
{
    return std::to_string(value);
}

std::string reference(unsigned id)
{
    return number(id) + " 0 R";
}

std::string references(const std::vector<unsigned>& ids)
{
    std::string text = "[ ";
    for (const unsigned id : ids)
        text += reference(id) + ' ';
    return text + ']';
}

std::string compressed(const std::string& data, int level)
{
    std::string out(compressBound(data.size()), 0);
    uLongf size = out.size();
    if (compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(data.data()), data.size(),
            level)
        != Z_OK)
        std::abort();
    out.resize(size);
    return out;
}

enum class Storage { Plain, Flate, FastFlate };

// The text of a file in the making. Ids may be given out before their objects are written.
class FileText {
public:
    unsigned reserve()
    {
        _offsets.push_back(0);
        return static_cast<unsigned>(_offsets.size());
    }
    void put(unsigned id, std::string_view value)
    {
        _offsets[id - 1] = _text.size();
        _text += number(id) + " 0 obj\n";
        _text += value;
        _text += "\nendobj\n";
    }
    unsigned add(std::string_view value)
    {
        const unsigned id = reserve();
        put(id, value);
        return id;
    }
    // `entries` go into the stream's dictionary besides `Length` and `Filter`.
    void putStream(unsigned id, const std::string& data, Storage storage, const std::string& entries = "")
    {
        const int level = storage == Storage::FastFlate ? Z_BEST_SPEED : Z_DEFAULT_COMPRESSION;
        const std::string stored = storage == Storage::Plain ? data : compressed(data, level);
        const std::string filter = storage == Storage::Plain ? "" : " /Filter /FlateDecode";
        put(id, "<< /Length " + number(stored.size()) + filter + entries + " >>\nstream\n" + stored + "\nendstream");
    }
    unsigned addStream(const std::string& data, Storage storage, const std::string& entries = "")
    {
        const unsigned id = reserve();
        putStream(id, data, storage, entries);
        return id;
    }
    std::string finish(unsigned root) &&
    {
        const std::size_t start = _text.size();
        const std::string size = number(_offsets.size() + 1);
        _text += "xref\n0 " + size + "\n0000000000 65535 f \n";
        for (const std::size_t offset : _offsets) {
            char row[32];
            std::snprintf(row, sizeof row, "%010zu 00000 n \n", offset);
            _text += row;
        }
        _text += "trailer\n<< /Root " + reference(root) + " /Size " + size + " >>\nstartxref\n" + number(start)
            + "\n%%EOF\n";
        return std::move(_text);
    }

private:
    std::string _text = "%PDF-1.7\n";
    std::vector<std::size_t> _offsets; // by id, from 1 on
};

// Text that compresses about as prose does: words of a small vocabulary, some of them far more frequent.
class Prose {
public:
    Prose()
    {
        for (std::string& word : _words)
            for (std::size_t syllables = 1 + pick(4); syllables > 0; --syllables) {
                word += "bcdfghklmnprstvw"[pick(16)];
                word += "aeiou"[pick(5)];
            }
    }
    // At least `length` characters of words with blanks between them.
    std::string line(std::size_t length)
    {
        std::string text;
        while (text.size() < length)
            text += (text.empty() ? "" : " ") + _words[std::min(pick(_words.size()), pick(_words.size()))];
        return text;
    }
    // Lines as a page shows them.
    std::string content(std::size_t length)
    {
        std::string text;
        while (text.size() < length)
            text += '(' + line(72) + ") Tj T*\n";
        return text;
    }
    std::size_t pick(std::size_t count) { return _random() % count; }

private:
    std::mt19937 _random{20}; // the engine, unlike the distributions, is the same everywhere
    std::array<std::string, 4096> _words;
};

// What a file is beside its workload: a catalog and one page.
std::string finishWithOnePage(FileText&& file, const std::string& catalogEntries)
{
    const unsigned root = file.reserve();
    const unsigned content = file.addStream("0 0 10 10 re f", Storage::Plain);
    const unsigned page = file.add("<< /Type /Page /Parent " + reference(root)
        + " /MediaBox [ 0 0 595 842 ] /Resources << >> /Contents " + reference(content) + " >>");
    file.put(root, "<< /Type /Pages /Kids [ " + reference(page) + " ] /Count 1 >>");
    const unsigned catalog
        = file.add("<< /Type /Catalog /Pages " + reference(root) + ' ' + catalogEntries + " >>");
    return std::move(file).finish(catalog);
}

// Ten objects, one of each kind that an object can have, some with values of every kind inside.
unsigned addGroup(FileText& file, std::size_t index)
{
    const std::string n = number(index);
    const unsigned group = file.reserve();
    std::vector<unsigned> members;
    members.push_back(file.add(number(index * 7)));
    members.push_back(file.add(n + ".5"));
    members.push_back(file.add("(A text of the group " + n + ", with \\(brackets\\))"));
    members.push_back(file.add("<00017F80FF" + number(100000 + index % 100000) + ">"));
    members.push_back(file.add("/Name" + n));
    members.push_back(file.add(index % 2 == 0 ? "true" : "false"));
    members.push_back(file.add("[ " + n + " 2.25 (element) /First true null <0A1B2C3D> [ 10 20 30 40 50 60 ] "
        "<< /K 1 /L /M >> " + reference(group) + " false -17 (last) /End ]"));
    members.push_back(file.add("<< /Type /Item /BBox [ 0 0 595 842 ] /Flags 4 /Weight 1.75 /Owner (Somebody) /Parent "
        + reference(group) + " /First " + reference(members[0]) + " /Hidden false /Code <ABCD> /Sub << /Key /Value "
        "/Deep << /Level 2 /List [ 1 2 3 4 5 ] >> >> >>"));
    members.push_back(file.addStream("the data of a small stream, number " + n, Storage::Plain, " /Kind /Small"));
    file.put(group,
        "<< /Type /Group /Number " + n + " /Title (Group " + n + ") /Members " + references(members) + " >>");
    return group;
}

std::string objects(std::size_t count)
{
    constexpr std::size_t perGroup = 10;
    constexpr std::size_t perIndex = 1000;
    FileText file;
    std::vector<unsigned> groups;
    std::vector<unsigned> indices;
    for (std::size_t i = 1; i <= count / perGroup; ++i) {
        groups.push_back(addGroup(file, i));
        if (groups.size() == perIndex || i == count / perGroup) {
            indices.push_back(file.add(references(groups)));
            groups.clear();
        }
    }
    return finishWithOnePage(std::move(file), "/Groups " + references(indices));
}

// A chain of arrays and dictionaries in turns, each in the one before.
std::string chain(std::size_t depth, std::size_t seed)
{
    std::string text;
    for (std::size_t level = 0; level < depth; ++level)
        text += level % 2 == 0 ? "[ (text) " + number(100 + (seed + level) % 900) + ' ' : "<< /Key /Name /Next ";
    text += "null";
    for (std::size_t level = depth; level > 0; --level)
        text += level % 2 == 1 ? " ]" : " >>";
    return text;
}

std::string wideArray(std::size_t length)
{
    std::string text = "[ ";
    for (std::size_t i = 0; i < length; ++i)
        switch (i % 5) {
        case 0: text += number(i) + ' '; break;
        case 1: text += number(i % 1000) + ".5 "; break;
        case 2: text += "(text) "; break;
        case 3: text += "/Name "; break;
        default: text += i % 2 == 0 ? "true " : "null ";
        }
    return text + ']';
}

// 200 makes 200 values of depth 200, and 20 arrays of 100,000 elements.
std::string nested(std::size_t count)
{
    constexpr std::size_t depth = 200;
    FileText file;
    std::vector<unsigned> deep;
    std::vector<unsigned> wide;
    for (std::size_t i = 0; i < count; ++i)
        deep.push_back(file.add(chain(depth, i)));
    for (std::size_t i = 0; i < count / 10; ++i)
        wide.push_back(file.add(wideArray(count * 500)));
    return finishWithOnePage(std::move(file), "/Deep " + references(deep) + " /Wide " + references(wide));
}

// Each object has the same levels, in many short chains or in few long ones: the bytes differ by their
// places alone.
template <std::size_t Depth>
std::string depth(std::size_t count)
{
    constexpr std::size_t levels = 400;
    constexpr std::size_t mostChains = 40;
    static_assert(levels % Depth == 0 && levels / Depth <= mostChains);
    FileText file;
    std::vector<unsigned> ids;
    for (std::size_t i = 0; i < count; ++i) {
        std::string text = "[";
        for (std::size_t j = 0; j < mostChains; ++j)
            text += ' ' + (j < levels / Depth ? chain(Depth, i + j) : "null"); // a chain ends in a null, too
        ids.push_back(file.add(text + " ]"));
    }
    return finishWithOnePage(std::move(file), "/Chains " + references(ids));
}

unsigned addFont(FileText& file, const std::string& name)
{
    return file.add("<< /Type /Font /Subtype /Type1 /BaseFont /" + name + " /Encoding /WinAnsiEncoding >>");
}

enum class ResourcePlace { Root, EachPage };

std::string pages(std::size_t count, ResourcePlace place)
{
    constexpr std::size_t contentLength = 2000;
    FileText file;
    Prose prose;
    const unsigned root = file.reserve();
    const std::string resources = " /Resources << /Font << /F1 " + reference(addFont(file, "Helvetica")) + " /F2 "
        + reference(addFont(file, "Times-Roman")) + " >> /ExtGState << /G1 " + reference(file.add("<< /CA 1 >>"))
        + " >> >>";
    std::vector<unsigned> kids;
    for (std::size_t i = 1; i <= count; ++i) {
        const unsigned content = file.addStream("BT /F1 11 Tf 14 TL 72 770 Td\n(Page " + number(i) + ") Tj T*\n"
            + prose.content(contentLength) + "ET\n", Storage::Flate);
        kids.push_back(file.add("<< /Type /Page /Parent " + reference(root) + " /MediaBox [ 0 0 595 842 ]"
            + (place == ResourcePlace::EachPage ? resources : "") + " /Contents " + reference(content) + " >>"));
    }
    file.put(root, "<< /Type /Pages /Count " + number(count)
        + (place == ResourcePlace::Root ? resources : "") + " /Kids " + references(kids) + " >>");
    return std::move(file).finish(file.add("<< /Type /Catalog /Pages " + reference(root) + " >>"));
}

std::string streams(std::size_t length, Storage storage)
{
    constexpr std::size_t streamCount = 20;
    FileText file;
    Prose prose;
    std::vector<unsigned> ids;
    for (std::size_t i = 0; i < streamCount; ++i)
        ids.push_back(file.addStream(prose.content(length), storage));
    return finishWithOnePage(std::move(file), "/Streams " + references(ids));
}

// A group of fields on a page of its own, in columns.
unsigned addFieldGroup(FileText& file, unsigned root, std::size_t index, std::size_t fieldCount, unsigned& group)
{
    const unsigned page = file.reserve();
    group = file.reserve();
    std::vector<unsigned> fields;
    for (std::size_t i = 0; i < fieldCount; ++i) {
        const std::size_t x = 40 + i / 50 * 260;
        const std::size_t y = 800 - i % 50 * 15;
        fields.push_back(file.add("<< /Type /Annot /Subtype /Widget /FT /Tx /T (field-" + number(index) + '-'
            + number(i) + ") /V (old) /MaxLen 80 /DA (/Helv 10 Tf 0 g) /F 4 /Rect [ " + number(x) + ' ' + number(y)
            + ' ' + number(x + 250) + ' ' + number(y + 13) + " ] /P " + reference(page) + " /Parent " + reference(group)
            + " >>"));
    }
    file.put(group, "<< /T (group-" + number(index) + ") /Kids " + references(fields) + " >>");
    file.put(page, "<< /Type /Page /Parent " + reference(root) + " /MediaBox [ 0 0 595 842 ] /Resources << >> /Annots "
        + references(fields) + " >>");
    return page;
}

std::string form(std::size_t count)
{
    constexpr std::size_t perGroup = 100;
    FileText file;
    const unsigned root = file.reserve();
    std::vector<unsigned> kids;
    std::vector<unsigned> groups;
    for (std::size_t i = 0; i < count / perGroup; ++i) {
        unsigned group = 0;
        kids.push_back(addFieldGroup(file, root, i, perGroup, group));
        groups.push_back(group);
    }
    file.put(root, "<< /Type /Pages /Count " + number(kids.size()) + " /Kids " + references(kids) + " >>");
    const unsigned acroForm = file.add("<< /Fields " + references(groups)
        + " /NeedAppearances true /DR << /Font << /Helv " + reference(addFont(file, "Helvetica"))
        + " >> >> /DA (/Helv 10 Tf 0 g) >>");
    return std::move(file).finish(
        file.add("<< /Type /Catalog /Pages " + reference(root) + " /AcroForm " + reference(acroForm) + " >>"));
}

// A page with the fonts and images of a letterhead; `imageBytes` is the size of all images together.
std::string letterhead(std::size_t imageBytes, ResourcePlace place)
{
    constexpr std::size_t imageCount = 4;
    constexpr std::size_t width = 256;
    FileText file;
    Prose noise;
    std::string images;
    std::string paint;
    for (std::size_t i = 0; i < imageCount && imageBytes > 0; ++i) {
        const std::size_t height = imageBytes / imageCount / width;
        std::string pixels(width * height, 0);
        for (char& pixel : pixels)
            pixel = static_cast<char>(noise.pick(256));
        const unsigned id = file.addStream(pixels, Storage::Flate,
            " /Type /XObject /Subtype /Image /BitsPerComponent 8 /ColorSpace /DeviceGray /Width " + number(width)
                + " /Height " + number(height));
        images += " /LetterImage" + number(i) + ' ' + reference(id);
        paint += "q 100 0 0 50 " + number(50 + 120 * i) + " 760 cm /LetterImage" + number(i) + " Do Q\n";
    }
    const std::string resources = " /Resources << /Font << /LetterFont1 " + reference(addFont(file, "Courier"))
        + " /LetterFont2 " + reference(addFont(file, "Courier-Bold")) + " >>"
        + (images.empty() ? "" : " /XObject <<" + images + " >>") + " >>";
    const unsigned painting = file.addStream(paint + "0 0 10 10 re f\n", Storage::Flate);
    const unsigned writing
        = file.addStream("BT /LetterFont1 9 Tf 40 20 Td (Letterhead) Tj ET\n", Storage::Flate);
    const unsigned root = file.reserve();
    const unsigned page = file.add("<< /Type /Page /Parent " + reference(root) + " /MediaBox [ 0 0 595 842 ]"
        + (place == ResourcePlace::EachPage ? resources : "") + " /Contents " + references({painting, writing})
        + " >>");
    file.put(root, "<< /Type /Pages /Count 1 /Kids [ " + reference(page) + " ]"
        + (place == ResourcePlace::Root ? resources : "") + " >>");
    return std::move(file).finish(file.add("<< /Type /Catalog /Pages " + reference(root) + " >>"));
}

constexpr Workload all[] = {
    {"objects", "objects of every kind", objects},
    {"nested", "values of depth 200; a tenth as many arrays of 500 times as many elements", nested},
    {"depth-10", "objects of 400 levels in chains of 10", depth<10>},
    {"depth-50", "objects of 400 levels in chains of 50", depth<50>},
    {"depth-200", "objects of 400 levels in chains of 200", depth<200>},
    {"depth-400", "objects of 400 levels in one chain", depth<400>},
    {"pages", "pages, their resources at the root of the page tree",
        [](std::size_t count) { return pages(count, ResourcePlace::Root); }},
    {"pages-own", "pages with resources of their own",
        [](std::size_t count) { return pages(count, ResourcePlace::EachPage); }},
    {"streams", "bytes of text in each of 20 Flate streams",
        [](std::size_t count) { return streams(count, Storage::Flate); }},
    {"streams-fast", "bytes of text in each of 20 Flate streams of the fastest level",
        [](std::size_t count) { return streams(count, Storage::FastFlate); }},
    {"streams-plain", "bytes of text in each of 20 streams without filter",
        [](std::size_t count) { return streams(count, Storage::Plain); }},
    {"form", "text fields, in groups of 100", form},
    {"letterhead", "bytes of images on one page, its resources at the root",
        [](std::size_t count) { return letterhead(count, ResourcePlace::Root); }},
    {"letterhead-own", "bytes of images on one page with resources of its own",
        [](std::size_t count) { return letterhead(count, ResourcePlace::EachPage); }},
};

} // namespace

std::span<const Workload> workloads() noexcept
{
    return all;
}

} // namespace Bench
