#include "ImportSeeds.h"

#include <tests/import/QpdfFiles.h>
#include <tests/support/PackedText.h>
#include <tests/support/PdfText.h>

namespace Fuzz {

namespace {

using Tests::PackedText;
using Tests::PdfText;
using Tests::writtenByQpdf;

// A value that says its id.
PackedText::Member member(unsigned id, const std::string& value)
{
    return {id, "%" + std::to_string(id) + "\n" + value};
}

PackedText packed()
{
    return PackedText()
        .packed(3,
            {member(1, "<< /Type /Catalog /Pages 2 0 R >>"), member(2, "<< /Type /Pages /Kids [ 4 0 R ] /Count 1 >>"),
                member(
                    4, "<< /Type /Page /Parent 2 0 R /Contents 8 0 R /A [ -.5 1.050 (a\\)) <feff41> / true null ] >>")})
        .packed(5,
            {member(6, "4 0 R"), member(7, "(text\\\\\x80)"), member(9, "[ [ << /A#20B 7 0 R /A#G 1 /A 1 /A 2 >> ] ]"),
                member(10, "0.12345678901234567890123")},
            "/Extends 3 0 R")
        .stream(8, "BT (text) Tj ET", "/Filter [ /Crypt ] /DecodeParms [ << /Name /Identity >> ]")
        .object(11, "3 0 R")
        .object(12, "<< /Length 13 0 R /Filter [ /FlateDecode ] /DecodeParms [ null ] >>\nstream\nabc\nendstream")
        .object(13, "3");
}

std::string updatedTwice()
{
    std::string file = PdfText().pages().object(3, "(old)").object(4, "(gone)").trailer("/Size 5");
    for (const char* row : {"3 1\n0000000009 00000 n \n", "4 1\n0000000000 00001 f \n"}) {
        const std::size_t previous = file.rfind("xref\n", file.rfind("startxref") - 1);
        const std::string object = std::to_string(file.size());
        const std::string ten = std::string(10 - object.size(), '0') + object;
        file += "3 0 obj\n(new)\nendobj\n";
        const std::size_t table = file.size();
        file += "xref\n" + std::string(row).replace(4, 10, row[0] == '3' ? ten : "0000000000")
            + "trailer\n<< /Root 1 0 R " + "/Size 5 /Prev " + std::to_string(previous) + " >>\nstartxref\n"
            + std::to_string(table) + "\n%%EOF\n";
    }
    return file;
}

} // namespace

SeedFiles importFiles()
{
    SeedFiles files;
    for (const auto& [name, file] : smallFiles()) { // libqpdf asks for a Size
        const std::size_t trailer = file.rfind("<<", file.rfind("startxref"));
        files[name] = trailer == file.npos ? file : std::string(file).insert(trailer + 2, " /Size 40");
    }
    files["packed"] = packed();
    files["updated"] = updatedTwice();
    const std::string plain = PdfText()
                                  .pages("3 0 R", "/Count 1")
                                  .object(3, "<< /Type /Page /Parent 2 0 R /A (text) >>")
                                  .stream(4, "data")
                                  .trailer("/Info 3 0 R /ID 4 0 R /Size 5");
    for (const std::string& file : {std::string(packed()), plain})
        for (const bool hasObjectStreams : {false, true}) {
            const std::string name = (file == plain ? "plain" : "packed")
                + std::string(hasObjectStreams ? "-streams" : "");
            const auto make = [&](const std::string& kind, const std::function<void(QPDFWriter&)>& set) {
                files[name + "-" + kind] = writtenByQpdf(file, [&](QPDFWriter& writer) {
                    writer.setObjectStreamMode(hasObjectStreams ? qpdf_o_generate : qpdf_o_disable);
                    set(writer);
                });
            };
            make("uncompressed", [](QPDFWriter& writer) { writer.setCompressStreams(false); });
            make("40-bits", [](QPDFWriter& writer) {
                writer.setR2EncryptionParametersInsecure("", "owner", true, true, true, true);
            });
            make("aes", [](QPDFWriter& writer) {
                writer.setR4EncryptionParametersInsecure(
                    "", "owner", true, true, true, true, true, true, qpdf_r3p_full, false, true);
            });
            make("256-bits", [](QPDFWriter& writer) {
                writer.setR6EncryptionParameters("", "owner", true, true, true, true, true, true, qpdf_r3p_full, true);
            });
        }
    const std::string page = PdfText()
                                 .pages("3 0 R", "/Count 1")
                                 .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 9 9 ] /Contents 4 0 R >>")
                                 .stream(4, "BT (text) Tj ET")
                                 .trailer("/Size 5");
    files["linearized"] = writtenByQpdf(page, [](QPDFWriter& writer) { writer.setLinearization(true); });
    return files;
}

} // namespace Fuzz
