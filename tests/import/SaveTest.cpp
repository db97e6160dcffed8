#include <import/Save.h>

#include <import/Import.h>
#include <import/SameContents.h>

#include <tests/import/Contents.h>
#include <tests/import/QpdfFiles.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;
using Host::Reason;

namespace {

std::string differenceOf(const std::string& first, const std::string& second)
{
    QPDF one;
    QPDF other;
    one.processMemoryFile("", first.data(), first.size());
    other.processMemoryFile("", second.data(), second.size());
    return Import::findDifference(one, other).value_or("none");
}

} // namespace

TEST(ImportSave, storesTheSameDocument)
{
    const TestFolder folder;
    const std::string out = folder.path("out.pdf");
    for (const std::string method : {"", "40 bits", "RC4", "AES", "256 bits"})
        for (const bool isCompact : {false, true}) {
            const bool isEncrypted = !method.empty();
            const std::string file = isEncrypted ? encrypted(classic, "user", method.c_str()) : classic;
            const std::string in = folder.put("in.pdf", file);
            const auto opened = Import::open(in, {.password = "user"});
            ASSERT_TRUE(opened) << method << opened.refusal().message;
            const Import::Storage storage{isCompact, isEncrypted ? opened->opened.file : nullptr, "user"};
            const auto saved = Import::save(opened->opened, out, storage);
            ASSERT_TRUE(saved) << method << saved.refusal().message;
            EXPECT_EQ(saved->size, std::filesystem::file_size(out));
            const auto again = Import::open(out, {.password = "user"});
            ASSERT_TRUE(again) << method << again.refusal().message;
            EXPECT_TRUE(contentsOf(again->opened.document) == contentsOf(opened->opened.document)) << method;
            EXPECT_EQ(PDF::objectsOf(again->opened.document).size(), PDF::objectsOf(opened->opened.document).size());
            EXPECT_EQ(again->report.objectStreams > 0, isCompact);
            EXPECT_EQ(again->report.isDecrypted, isEncrypted);
            EXPECT_EQ(bool(Import::open(out)), !isEncrypted);
            if (isEncrypted) {
                EXPECT_FALSE(again->report.permissions->mayPrint);
            }
        }
}

TEST(ImportSave, isNeverWithoutTheEncryptionThatWasAskedFor)
{
    const TestFolder folder;
    const auto opened = Import::open(folder.put("in.pdf", classic));
    ASSERT_TRUE(opened);
    const auto saved = Import::save(opened->opened, folder.path("out.pdf"), {.encryptedLike = opened->opened.file});
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.refusal().reason, Reason::WrongArgument);
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.pdf")));
}

TEST(ImportSave, takesInWhatLibqpdfWritesElsewhere)
{
    const TestFolder folder;
    for (const char* extensions : {"<< /Other 5 0 R >>", "<< /ADBE << /A 1 >> >>", "[ ]", "(none)"}) {
        const std::string file = PdfText()
                                     .object(1, "<< /Type /Catalog /Pages 2 0 R /Extensions 6 0 R >>")
                                     .object(2, "<< /Type /Pages /Kids [ ] /Count 0 >>")
                                     .object(3, "(nobody refers to it)").object(5, "[ 6 0 R ]")
                                     .object(6, extensions)
                                     .object(7, "[ (one) (two) ]")
                                     .trailer("/Size 8 /ID 7 0 R");
        const auto opened = Import::open(folder.put("in.pdf", file));
        ASSERT_TRUE(opened);
        const auto saved = Import::save(opened->opened, folder.path("out.pdf"), {.isCompact = true});
        EXPECT_TRUE(saved) << extensions << ": " << saved.refusal().message;
    }
}

TEST(ImportSave, leavesTheTargetWhenRefused)
{
    const TestFolder folder;
    const std::string out = folder.put("out.pdf", "old");
    const auto opened = Import::open(folder.put("in.pdf", encrypted(classic, "user", "AES")), {.password = "user"});
    ASSERT_TRUE(opened);
    const auto refused = Import::save(opened->opened, out, {true, opened->opened.file, "wrong"});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.refusal().reason, Reason::PasswordNeeded);
    EXPECT_EQ(folder.get("out.pdf"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator()), 2);
}

TEST(ImportSave, findsWhatIsNotTheSame)
{
    const std::string file = PdfText()
                                 .object(1, "<< /Type /Catalog /A [ 1 -0.50 (a) true 5 0 R ] /B 3 0 R /C 4 0 R "
                                            "/Z << /ADBE 1 >> /Extensions << /Other 1 /ADBE << /A 1 >> >> >>")
                                 .object(3, "[ 5 0 R ]").object(4, "[ 5 0 R ]").object(5, "(five)")
                                 .stream(6, "data", "/K 1").object(7, "(seven)")
                                 .trailer("/Size 8 /ID [ (one) (two) ]");
    EXPECT_EQ(differenceOf(file, writtenByQpdf(file, [](QPDFWriter& writer) {
        writer.setPreserveUnreferencedObjects(true);
        writer.setObjectStreamMode(qpdf_o_generate);
    })), "none");
    const std::tuple<const char*, const char*, const char*> changes[] = {
        {"/Z << /ADBE ", "/Z << /ADBF ", "object 1 0"}, {"/ADBE << /A 1", "/ADBE << /A 2", "none"},
        {"/Other 1", "/Other 2", "object 1 0"},
        {"[ 1 ", "[ 2 ", "object 1 0"}, {"-0.50", "-0.05", "object 1 0"}, {"(a)", "(b)", "object 1 0"},
        {"true", "null", "object 1 0"}, {"/B 3", "/B 4", "object 1 0"}, {"/C 4 0 R", "/C null ", "object 1 0"},
        {"(five)", "(cinq)", "object 5 0"}, {"data", "date", "object 6 0"}, {"/K 1", "/K 2", "object 6 0"},
        {"(seven)", "(zeven)", "object 7 0"}, {"(one)", "(eins)", "the trailer"}, {"(two)", "(zwei)", "none"},
    };
    for (const auto& [before, after, difference] : changes) {
        const std::string changed = damaged(file, before, after);
        EXPECT_EQ(differenceOf(file, changed), difference) << after;
    }
}
