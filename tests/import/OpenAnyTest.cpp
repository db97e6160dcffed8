#include <import/OpenAny.h>

#include <tests/import/QpdfFiles.h>
#include <tests/support/Documents.h>
#include <tests/support/PackedText.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;
using Import::openAny;
using Import::DoorUse;

TEST(OpenAny, takesTheDoorWhereTheCoreDoesntSuffice)
{
    struct Case {
        const char* rule;
        std::string file;
        DoorUse use;
        const char* why; // null where the core opens it
    };
    const std::string plain = PdfText().pages().trailer("/Size 3");
    const std::string packed = PackedText().pages();
    const std::string blank = plain + " ";
    const std::string updated = plain + "xref\n1 1\n0000000009 00000 n \ntrailer\n<< /Root 1 0 R /Size 3 /Prev "
        + std::to_string(plain.find("xref\n")) + " >>\nstartxref\n" + std::to_string(plain.size()) + "\n%%EOF\n";
    const Case cases[] = {
        {"what the core opens", plain, DoorUse::Automatic, nullptr},
        {"what it refuses for the way it is stored", packed, DoorUse::Automatic,
            "cross-reference streams, object streams"},
        {"what it refuses otherwise", blank, DoorUse::Automatic, "there is no %%EOF at the very end"},
        {"what it has in part", updated, DoorUse::Automatic, "several tables"},
        {"what it reads otherwise", PdfText().object(1, "<< /Type /Catalog >>").object(2, "[ 3(t) ]").trailer("/Size 3"),
            DoorUse::Automatic, "parts that the core reads otherwise"},
        {"the same, of which libqpdf warns",
            PdfText()
                .object(1, "<< /Type /Catalog >>")
                .object(2, "<< /Length 2 >>\nstream\nabcd\nendstream")
                .trailer("/Size 3"),
            DoorUse::Automatic, nullptr},
        {"anything on demand", plain, DoorUse::Always, ""},
    };
    const TestFolder folder;
    for (const Case& row : cases) {
        const auto opened = openAny(Import::open, folder.put("in.pdf", row.file), {}, row.use);
        ASSERT_TRUE(opened) << row.rule << ": " << opened.refusal().message;
        EXPECT_EQ(opened->why, row.why ? row.why : "") << row.rule;
        EXPECT_EQ(opened->report.has_value(), row.why != nullptr) << row.rule;
        EXPECT_EQ(PDF::objectsOf(opened->opened.document).size(), 2u) << row.rule;
    }
}

TEST(OpenAny, saysWhatARefusedFileIs)
{
    const auto encrypted = writtenByQpdf(PackedText().pages(), [](QPDFWriter& writer) {
        writer.setR6EncryptionParameters("user", "owner", true, true, true, true, true, true, qpdf_r3p_full, true);
    });
    struct Case {
        std::string file;
        DoorUse use;
        Host::Reason reason;
        const char* message;
    };
    const Case cases[] = {
        {PackedText().pages(), DoorUse::Never, Host::Reason::BrokenRule,
            "is not opened as it is stored: cross-reference streams, object streams"},
        {PackedText().object(1, "<< word >>"), DoorUse::Automatic, Host::Reason::BrokenRule,
            "cross-reference streams; object 1 0, offset 20: unknown token while reading object; treating as string"},
        {encrypted, DoorUse::Automatic, Host::Reason::PasswordNeeded, "is encrypted and needs a password"},
        {"no PDF file", DoorUse::Automatic, Host::Reason::BrokenRule,
            "the first line is not a PDF header of a known version; can't find PDF header"},
    };
    const TestFolder folder;
    for (const Case& row : cases) {
        const auto refused = openAny(Import::open, folder.put("in.pdf", row.file), {}, row.use);
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.refusal().message, row.message);
        EXPECT_EQ(refused.refusal().reason, row.reason);
    }
    EXPECT_EQ(openAny(Import::open, folder.path("missing")).refusal().reason, Host::Reason::Unreadable);
    EXPECT_EQ(openAny(nullptr, folder.put("in.pdf", "")).refusal().code, ErrNullArgument);
}
