#include "SeedFiles.h"

#include <tests/support/FlateData.h>
#include <tests/support/PdfText.h>

namespace Fuzz {

namespace {

using Tests::PdfText;
using Tests::compressed;

constexpr std::size_t largeSize = 1'000'000;
constexpr std::size_t mostLevels = 500;
constexpr const char* flate = "/Filter /FlateDecode";

std::string repeated(const std::string& piece, std::size_t count)
{
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

std::string reference(std::size_t id)
{
    return std::to_string(id) + " 0 R";
}

std::string values(const std::string& ending)
{
    return PdfText(ending)
        .pages("3 0 R")
        .object(3, "<< /Type /Page /A [ 1 -2 +3 4.50 -6.25 .5 7. true false null /N#20ame (text) <48 65> ] "
                   "/B << /C << /D [ [ ] << >> [ [ 0 ] ] ] >> >> /E 1 0 R /Contents 4 0 R >>")
        .stream(4, "BT (text) Tj ET")
        .object(5, "(a\\(b\\)c\\n\\r\\t\\b\\f\\101\\200\\377(nested))")
        .object(6, "<48656C6C6F>")
        .object(7, "/Name")
        .object(8, "12.75")
        .object(9, "true")
        .object(10, "[ 1 0 R 3 0 R ]");
}

// What doesn't come back as it was meant.
std::string losses()
{
    return PdfText()
        .pages("3 0 R")
        .object(3, "<< /Type /Page /A [ 1.05 -0.5 1.-5 ] /B (\\134) /C (\\\\n) /D (\x80\x8d) /E (\\201) /F <484> % no\n"
                   "/A [ (last) ] /G [ 12(a) 1 0 R] >>")
        .object(7, "5 0 R")
        .trailer("/Prev 12 /ID [ (id) <00> ]");
}

std::string streams(const std::string& ending)
{
    const std::string content = "0 0 m 100 100 l S\n";
    return PdfText(ending)
        .pages("3 0 R")
        .object(3, "<< /Type /Page /Contents [ 4 0 R 5 0 R ] >>")
        .stream(4, content)
        .stream(5, compressed(content), flate)
        .stream(6, compressed(content) + "behind", flate)
        .stream(7, Tests::corrupted(compressed(content)), flate)
        .stream(8, "\nabc\n", "/Filter /LZWDecode")
        .stream(9, "<41>", "/Filter [ /ASCIIHexDecode ]")
        .stream(10, "")
        .stream(11, "", flate)
        .object(12, "5")
        .object(13, "<< /Length 12 0 R >>\nstream\n12345\nendstream")
        .object(14, "<< /Length 12 0 R /Filter /FlateDecode >>\nstream\n12345\nendstream")
        .stream(15, Tests::incompressible(300));
}

// A field of each kind, with widgets beside and below it.
std::string form()
{
    return PdfText()
        .object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /NeedAppearances false /DA (/F 0 Tf) /Q 1 /DR << >> "
                   "/CO [ 4 0 R ] /Fields [ 4 0 R 5 0 R 6 0 R 8 0 R 9 0 R 10 0 R 11 0 R ] >> >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>")
        .object(3, "<< /Type /Page /Annots [ 4 0 R 5 0 R ] >>")
        .object(4, "<< /FT /Tx /T (text) /TU (tip) /TM (map) /V (old) /DV (none) /MaxLen 10 /Q 2 /Ff 4096 >>")
        .object(5, "<< /FT /Btn /T (check) /V /Yes /AS /Yes /AP << /N << /Yes 3 0 R /Off 3 0 R >> >> >>")
        .object(6, "<< /FT /Btn /Ff 32768 /T (radio) /Opt [ (a) (b) ] /Kids [ 7 0 R 7 0 R ] >>")
        .object(7, "<< /Parent 6 0 R /AS /Off /AP << /N << /1 3 0 R >> >> >>")
        .object(8, "<< /FT /Ch /Ff 2097152 /T (list) /Opt [ (a) [ (b) (shown) ] <FEFF0063> ] /V [ (a) (b) ] "
                   "/I [ 0 1 ] >>")
        .object(9, "<< /FT /Ch /Ff 393216 /T (combo) /Opt [ (a) (b) ] /V (a) /TI 1 >>")
        .object(10, "<< /FT /Sig /T (signature) >>")
        .object(11, "<< /T (group) /Kids [ 12 0 R 13 0 R ] >>")
        .object(12, "<< /FT /Tx /T (inner) /Parent 11 0 R /MaxLen -1 >>")
        .object(13, "<< /FT /Btn /Ff 65536 /T (push) /Parent 11 0 R >>");
}

// Fields with looks, on two pages and in the structure.
std::string tagged()
{
    const auto widget = [](const std::string& entries) {
        return "<< /Subtype /Widget /Rect [ 10 20 30 60 ] /AP << /N 12 0 R >> " + entries + " >>";
    };
    return PdfText()
        .object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ 5 0 R ] /CO [ 6 0 R 7 0 R ] >> "
                   "/StructTreeRoot << /K 8 0 R /ParentTree 10 0 R /ParentTreeNextKey 4 >> >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R 4 0 R ] /Count 2 >>")
        .object(3, "<< /Type /Page /Annots 11 0 R /StructParents 0 /Rotate 90 /Contents 13 0 R >>")
        .object(4, "<< /Type /Page /Annots 11 0 R /Contents [ 13 0 R ] >>")
        .object(5, "<< /FT /Tx /T (a) /Kids [ 6 0 R 7 0 R ] >>")
        .object(6, widget("/Parent 5 0 R /T (b) /StructParent 1 /F 20"))
        .object(7, widget("/Parent 5 0 R /T (c) /StructParent 2 /OC 14 0 R"))
        .object(8, "<< /S /Document /K [ 9 0 R << /S /Form /K << /Type /OBJR /Obj 7 0 R >> >> ] >>")
        .object(9, "<< /S /Form /P 8 0 R /K [ 0 << /Type /OBJR /Obj 6 0 R >> ] >>")
        .object(10, "<< /Kids [ << /Nums [ 0 [ 9 0 R ] 1 9 0 R ] >> << /Nums [ 2 8 0 R ] /Limits [ 2 2 ] >> ] >>")
        .object(11, "[ 6 0 R << /Subtype /Link >> 7 0 R ]")
        .stream(12, "0 0 9 9 re f", "/BBox [ 0 0 10 10 ] /Matrix [ 0 1 -1 0 5 5 ]")
        .stream(13, "q Q")
        .object(14, "<< /Type /OCG /Name (layer) >>");
}

std::string pages()
{
    return PdfText()
        .pages("3 0 R 4 0 R 5 0 R", "/Count 3 /Resources << /Font << /F1 7 0 R >> /ProcSet [ /PDF ] >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /Contents 6 0 R /Resources << /Font << /F2 7 0 R >> >> >>")
        .object(4, "<< /Type /Page /Parent 2 0 R /Contents [ 6 0 R 6 0 R ] >>")
        .object(5, "<< /Type /Page /Parent 2 0 R /Resources 8 0 R >>")
        .stream(6, "q Q")
        .object(7, "<< /Type /Font /BaseFont /Helvetica >>")
        .object(8, "<< /Font 9 0 R /ProcSet [ /PDF /Text ] >>")
        .object(9, "<< /F3 7 0 R >>");
}

// Objects from number 3 on, each of them `value` of the next one's reference.
template <class Value>
std::string chain(std::size_t count, Value value, const std::string& fields = "")
{
    PdfText file;
    file.object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ " + fields + " ] >> >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R ] >>");
    for (std::size_t id = 3; id < count + 3; ++id)
        file.object(static_cast<unsigned>(id), value(reference(id + 1)));
    return file.object(static_cast<unsigned>(count + 3), "<< >>");
}

// A stream whose data goes up to the end of the file, and so many elements beyond it.
std::string dataToEnd(std::size_t beyond)
{
    const std::string length = "/Length 999";
    const std::string file = PdfText().object(1, "<< " + length + " >>\nstream\n");
    const std::size_t start = file.find("stream\n") + 7;
    return Tests::damaged(file, length, "/Length " + std::to_string(file.size() - start + beyond));
}

// Objects that lie in each other: each begins in a comment of the array that is the one before.
std::string overlapping()
{
    std::string file = "%PDF-1.4\n";
    std::string table;
    char row[32];
    const std::string filling = repeated("1 ", 470'000);
    for (unsigned id = 1; id <= 15; ++id) {
        std::snprintf(row, sizeof(row), "%010zu 00000 n \n", file.size());
        table += row;
        file += std::to_string(id) + " 0 obj\n[ %";
    }
    const std::string objects = file + "\n" + filling + repeated("] ", 15) + "\nendobj\n";
    return objects + "xref\n0 16\n0000000000 65535 f \n" + table + "trailer\n<< /Size 16 >>\nstartxref\n"
        + std::to_string(objects.size()) + "\n%%EOF\n";
}

} // namespace

std::string letterhead()
{
    return PdfText("\n", "1.6")
        .pages("3 0 R 6 0 R")
        .object(3, "<< /Type /Page /Contents 4 0 R /Resources << /Font << /G1 5 0 R >> /ProcSet [ /PDF ] >> >>")
        .stream(4, compressed("BT /G1 12 Tf (Letterhead) Tj ET"), flate)
        .object(5, "<< /Type /Font /Descriptor 7 0 R >>")
        .object(6, "<< /Type /Page /Contents [ 4 0 R 8 0 R ] >>")
        .object(7, "<< /File 8 0 R /Widths [ 1 2 3 ] >>")
        .stream(8, "font");
}

SeedFiles smallFiles()
{
    return {
        {"empty", PdfText().root("9 0 R")},
        {"values-lf", values("\n")},
        {"values-cr", values("\r")},
        {"values-crlf", values("\r\n")},
        {"losses", losses()},
        {"streams-lf", streams("\n")},
        {"streams-cr", streams("\r")},
        {"form", form()},
        {"tagged", tagged()},
        {"pages", pages()},
        {"pages-with-bad-content",
            PdfText().pages("3 0 R 4 0 R").object(3, "<< /Contents [ ] >>").object(4, "<< /Contents 1 >>")},
        {"letterhead", letterhead()},
        {"cycle", PdfText().pages("3 0 R").object(3, "<< /Contents 4 0 R /Resources 5 0 R >>").stream(4, "", "/A 5 0 R")
            .object(5, "<< /Font << /F 5 0 R >> >>")},
        {"length-beyond", PdfText().pages().object(3, "<< /Length 999 >>\nstream\n\nendstream")},
        {"data-to-end", dataToEnd(0)},
        {"data-beyond-end", dataToEnd(1)},
        {"trailer-brackets", PdfText().pages().trailer("/ID [ (>> <<) ]")},
        {"no-table", Tests::damaged(values("\n"), "xref", "yref")},
        {"version-2", PdfText("\n", "2.0").pages()},
    };
}

SeedFiles deepFiles()
{
    PdfText deep;
    deep.pages();
    for (unsigned id = 3; id < 40; ++id)
        deep.object(id, repeated("[", mostLevels) + repeated("]", mostLevels));
    const auto kid = [](const std::string& next) { return "<< /T (a) /Kids [ " + next + " ] >>"; };
    const auto twoKids = [](const std::string& next) { return "<< /Kids [ " + next + " " + next + " ] >>"; };
    const auto resources = [](const std::string& next) {
        return "<< /Contents 4 0 R /Resources " + next + " /Font << /F " + next + " >> >>";
    };
    const auto twoFonts = [](const std::string& next) {
        return "<< /Contents 4 0 R /Resources << /Font << /F [ " + next + " " + next + " ] >> >> >>";
    };
    return {
        {"deep", deep},
        {"deep-dictionary",
            PdfText().object(1, repeated("<</A", mostLevels) + " 1" + repeated(" >>", mostLevels))},
        {"kids-too-deep", chain(3000, kid, "3 0 R")},
        {"kids-deep", chain(480, kid, "3 0 R 3 0 R")},
        {"kids-doubling", chain(100, twoKids, "3 0 R")},
        {"resources", chain(3000, resources)},
        {"resources-doubling", chain(60, twoFonts)},
    };
}

SeedFiles longFiles()
{
    PdfText sharing; // the data of each stream is all that follows, more or less
    sharing.pages();
    for (unsigned id = 3; id < 1000; ++id)
        sharing.object(id, "<< /Length " + std::to_string(50 * (1000 - id)) + " >>\nstream\n");
    PdfText pages; // each with content and resources
    std::string kids;
    for (unsigned id = 3; id < 3000; id += 2) {
        kids += reference(id) + " ";
        pages.object(id, "<< /Contents " + reference(id + 1) + " /Resources << /Font << /F 3001 0 R >> >> >>")
            .stream(id + 1, "q Q");
    }
    pages.pages(kids).object(3001, "<< /Type /Font >>");
    const auto thousands = [](std::size_t count) { return compressed(std::string(1000 * count, 'a')); };
    return {
        {"long", PdfText().pages().object(3, "[" + repeated(" 1", largeSize / 2 - 1000) + " ]")},
        {"long-text", PdfText().pages().object(3, "(" + repeated("(\\200)", largeSize / 6 - 100) + ")")},
        {"long-name", PdfText().pages().object(3, "/" + repeated("n", largeSize - 1000))},
        {"overlapping", overlapping()},
        {"pages", pages},
        {"sharing", sharing},
        {"decodes-long", PdfText().pages().stream(3, thousands(30'000), flate)},
        {"decodes-medium", PdfText().pages().stream(3, thousands(10'000), flate)},
    };
}

} // namespace Fuzz
