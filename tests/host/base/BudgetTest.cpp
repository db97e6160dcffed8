#include <host/base/Budget.h>

#include <tests/support/Hostile.h>
#include <tests/support/TestFolder.h>

#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/files/MemoryStripe.h>
#include <host/files/Open.h>
#include <host/losses/Examine.h>
#include <host/pages/Background.h>
#include <host/pages/PageTree.h>
#include <host/pages/Place.h>
#include <host/saving/Save.h>
#include <host/streams/FilterChain.h>
#include <host/streams/Recompress.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

const TestFolder folder;

// By a stripe that is as fast as a file.
Ref<PDF::Document> documentOf(const std::string& bytes)
{
    return PDF::Document::create(make<MemoryStripe>(std::vector<std::uint8_t>(bytes.begin(), bytes.end())));
}

template <class T>
bool isLimited(const Result<T>& result)
{
    return !result && result.refusal().reason == Reason::LimitReached && result.refusal().code == ErrOutOfRange
        && result.refusal().message.find("(limitFactor raises it)") != std::string::npos;
}

// The bytes of the texts of a listing, and of what holds them.
std::uint64_t sizeOf(const FormFields& form)
{
    std::uint64_t size = 0;
    const auto add = [&size](const std::string& text) { size += sizeof text + text.size(); };
    for (const FormField& field : form.fields) {
        add(field.path);
        for (const std::string& text : field.value.value_or(FieldTexts()))
            add(text);
        for (const FieldOption& option : field.options) {
            add(option.exported);
            add(option.displayed);
        }
        for (const std::string& state : field.states)
            add(state);
    }
    return size;
}

// Whether all texts are there, within the limit, or it was told which ones aren't.
bool isWithin(const Result<FormFields>& form, std::size_t fileSize)
{
    return isLimited(form) || (form && sizeOf(*form) < Limits::texts.of(fileSize));
}

} // namespace

TEST(Budget, isSpentUntilItIsExceeded)
{
    Budget budget(std::uint64_t(1000), 2);
    EXPECT_EQ(budget.left(Cost::Copies), 2 * ((std::uint64_t(1) << 20) + 4000));
    EXPECT_TRUE(budget.spend(Cost::Copies, 1000));
    EXPECT_TRUE(budget.spend(Cost::Copies, budget.left(Cost::Copies)));
    EXPECT_FALSE(budget.isExceeded());
    EXPECT_FALSE(budget.spend(Cost::Copies, 5));
    EXPECT_TRUE(budget.spend(Cost::Steps, 1)) << "each has its own";
    EXPECT_FALSE(budget.spend(Cost::Steps, ~std::uint64_t(0))) << "sums don't run over";
    EXPECT_EQ(budget.refusal().message, "it takes 2105157 copied values or more, and the limit for a file of its size is"
                                        " 2105152 (limitFactor raises it)");
    EXPECT_EQ(Budget(~std::uint64_t(0), 3).left(Cost::Texts), ~std::uint64_t(0));
}

// At two sizes, since a limit that grows with anything but the file is none.
TEST(Budget, listingsAndFillingsOfHostileFormsAreLimited)
{
    using Make = std::string (*)(std::size_t);
    const std::tuple<const char*, Make, const char*> cases[] = {
        {"one option", Hostile::sharedOption, "x"}, {"one list of options", Hostile::sharedOptions, nullptr},
        {"one inherited stream", Hostile::inheritedStream, nullptr}, {"one listed stream", Hostile::listedStream, nullptr},
        {"one list of states", Hostile::sharedStates, "s1"}, {"one long path", Hostile::longPaths, nullptr},
        {"one list of kids", Hostile::sharedKids, nullptr},
    };
    for (const auto& [rule, make, value] : cases)
        for (const std::size_t size : {200000u, 400000u}) {
            const std::string file = make(size);
            EXPECT_LT(file.size(), size + 100000) << rule;
            const auto document = documentOf(file);
            ASSERT_TRUE(document) << rule;
            const auto form = listFields(document);
            EXPECT_TRUE(isWithin(form, file.size())) << rule;
            EXPECT_TRUE(!form || form->skipped.back().find("left out: it takes") != std::string::npos) << rule;
            EXPECT_TRUE(!value || isLimited(fill(document, "a", std::string(value)))) << rule;
        }
}

TEST(Budget, streamsThatOverlapAreNeitherWrittenNorHeldNorConverted)
{
    for (const std::size_t size : {200000u, 400000u}) {
        const std::string path = folder.put("overlapping.pdf", Hostile::overlappingStreams(size));
        auto opened = Host::open(path);
        ASSERT_TRUE(opened) << opened.refusal().message;
        for (const bool isPlain : {false, true})
            EXPECT_TRUE(isLimited(save(*opened, folder.path("out.pdf"), {.isPlain = isPlain})));
        for (const bool isForced : {false, true})
            EXPECT_TRUE(isLimited(recompress(opened->document, PDF::Compression::Flate, {.isForced = isForced})));
        EXPECT_EQ(detach(*opened)->reason, Reason::LimitReached);
        EXPECT_TRUE(save(*opened, folder.path("out.pdf"), {.limitFactor = 1000}));
    }
}

// Each stream decodes to little for its size, and all of them together to much.
TEST(Budget, decodedDataIsLimitedForAllStreamsTogether)
{
    const std::string data = compressed(std::string(50 << 20, 'v'));
    PdfText file;
    file.pages();
    for (unsigned id = 3; id < 8; ++id)
        file.stream(id, data, "/Filter /FlateDecode");
    const auto document = documentOf(file);
    for (const bool isForced : {false, true})
        EXPECT_TRUE(isLimited(recompress(document, PDF::Compression::None, {.isForced = isForced})));
    EXPECT_FALSE(document->changed());
}

TEST(Budget, pagesThatShareTheirKidsAreLimited)
{
    for (const std::size_t size : {200000u, 400000u}) {
        const auto document = documentOf(Hostile::sharedPages(size));
        EXPECT_TRUE(isLimited(pages(document)));
        EXPECT_TRUE(isLimited(place(document, document)));
    }
}

TEST(Budget, mergedBackgroundsAreLimited)
{
    const std::string letterhead
        = PdfText().pages("3 0 R").object(3, "<</Type/Page/Contents 4 0 R/Resources<<>>>>").stream(4, "q Q");
    const auto merged = [](const std::string& own, const std::string& foreign, bool isForced) {
        const auto document = documentOf(own);
        auto result = mergeBackground(document, documentOf(foreign), PDF::BackgroundMode::AllPages,
            {.isForced = isForced});
        EXPECT_EQ(document->changed(), bool(result));
        return result;
    };
    const std::string own = PdfText().pages("3 0 R").object(3, "<</Type/Page>>");
    EXPECT_TRUE(merged(own, Hostile::doublingLetterhead(15), false));
    for (const bool isForced : {false, true}) {
        for (const unsigned levels : {25u, 500u})
            EXPECT_TRUE(isLimited(merged(own, Hostile::doublingLetterhead(levels), isForced))) << levels;
        for (const std::size_t size : {200000u, 400000u}) {
            EXPECT_TRUE(isLimited(merged(Hostile::repeatedPage(size), letterhead, isForced))) << size;
            EXPECT_TRUE(isLimited(merged(Hostile::sharedNames(size, 'o'), Hostile::sharedNames(size, 'f'), isForced)))
                << size;
        }
    }
}

// What people have is far below.
TEST(Budget, largeFilesThatAreHonestAreNotLimited)
{
    constexpr unsigned pageCount = 100000;
    PdfText file;
    std::string list;
    file.stream(3, "q Q");
    for (unsigned id = 4; id < 4 + pageCount; ++id) {
        file.object(id, "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 595 842 ] /Contents 3 0 R >>");
        list += std::to_string(id) + " 0 R ";
    }
    const std::string letter = PdfText().pages("3 0 R").stream(4, "q Q")
        .object(3, "<< /Type /Page /Contents 4 0 R /Resources << /ProcSet [ /PDF /Text ] /Font << /F1 5 0 R >> >> >>")
        .object(5, "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const auto document = documentOf(file.pages(list));
    const auto merged = mergeBackground(document, documentOf(letter), PDF::BackgroundMode::AllPages);
    EXPECT_EQ(merged ? merged->pageCount : 0, pageCount);

    constexpr std::size_t fieldCount = 5000;
    const auto form = documentOf(Hostile::form(Hostile::kids(fieldCount, "/FT/Ch/Ff 131072/Opt 4 0 R"),
        {"[" + Hostile::repeated("(an option like others)", 200) + "(x)]"}));
    auto filler = FormFiller::create(form);
    std::size_t filled = 0;
    for (std::size_t i = 0; i < fieldCount; ++i)
        filled += !filler->fill(std::to_string(i), std::string("x"));
    EXPECT_EQ(filled, fieldCount);
}
