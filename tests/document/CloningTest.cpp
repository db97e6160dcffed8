#include <tests/support/Pages.h>
#include <tests/support/SmallStack.h>

#include <gtest/gtest.h>

#include <values/Exact.h>

#include <functional>

using namespace Tests;

// Cloning is seen through the content streams of a foreign page: each is cloned as a new object.

namespace {

constexpr std::uint32_t firstNewId = 4;

Ref<PDF::Document> target()
{
    return open(PdfText().pages("3 0 R").object(3, "<< >>"));
}

// One page, whose content stream 4 has `entries` in its dictionary.
PdfText foreignWith(const std::string& entries)
{
    return PdfText().pages("3 0 R").object(3, "<< /Contents 4 0 R >>").stream(4, "data", entries);
}

} // namespace

TEST(Cloning, everyKindOfValueIsCopiedAndEachReferenceMakesAnObject)
{
    const Ref<PDF::Document> document = target();
    // The foreign document goes: nothing of the copy may depend on it.
    ASSERT_TRUE(addBeneath(document, open(
        foreignWith("/A [ 1.50 -3 true null ] /B << /C (te\\)xt) /D <41FF> >> /E /Name /F 5 0 R /G 5 0 R /H 6 0 R")
            .object(5, "<< /Deep 7 0 R >>").stream(6, "xyz", "/Filter /LZWDecode").object(7, "[ ]"))));
    const char* expected[] = {"[ ]", "<< /Deep 4 0 R >>", "[ ]", "<< /Deep 6 0 R >>",
        "<< /Filter /LZWDecode /Length 3 >>\nstream\nxyz\nendstream",
        "<< /A [ 1.50 -3 true null ] /B << /C (te\\)xt) /D <41FF> >> /E /Name /F 5 0 R /G 7 0 R /H 8 0 R /Length 4 >>"};
    EXPECT_EQ(idsFrom(document, firstNewId), "4 5 6 7 8 9");
    for (std::uint32_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(objectText(document, firstNewId + i).find(expected[i]), 0u) << expected[i];
    EXPECT_FALSE(objectOf(document, 9)->value()->changed());
}

TEST(Cloning, copiesRememberHowTheirSourceIsWritten)
{
    const Ref<PDF::Document> document = target();
    const Ref<PDF::Document> foreign = open(foreignWith("/N [ 1.05 -0.5 1.-5 ] /S [ (a\\\\b) <5> ]"));
    ASSERT_TRUE(addBeneath(document, foreign));
    const auto dictionaryOf = [](const Ref<PDF::Object>& object) -> Ref<PDF::Value> {
        return object->valueAsStream()->dict();
    };
    EXPECT_TRUE(PDF::isSameExactly(dictionaryOf(objectOf(foreign, 4)), dictionaryOf(objectOf(document, firstNewId))));
}

TEST(Cloning, aFailureIsToldAtEachLevelAndTakesTheTableBack)
{
    using Damage = std::function<void(const Ref<PDF::Document>&)>;
    const auto withEntry = [](Ref<PDF::Value> value) -> Damage {
        return [value](const Ref<PDF::Document>& foreign) {
            objectOf(foreign, 4)->valueAsStream()->dict()->set(text("Bad"), value);
        };
    };
    const auto withData = [](Fault fault, std::uint64_t width = 4) -> Damage {
        return [fault, width](const Ref<PDF::Document>& foreign) {
            objectOf(foreign, 5)->value().cast<PDF::StreamObj>()->strmData(make<TestStripe>("data", fault, width));
        };
    };
    // Rule, entries, damage, the lines before those of the key and the stream, and the number of ids used.
    const std::string object5 = "Failed to clone object: 5 (0)";
    const std::tuple<const char*, std::string, Damage, Lines, std::uint32_t> cases[] = {
        {"what was cloned before is taken back, its ids are not", "/Aa 6 0 R /Ab 6 0 R /Bad [ 6 0 R 9 0 R ]", {},
            {"Failed to resolve to be cloned object reference: 9 (0)",
                "Failed to clone array element of to be cloned array: 1h (1)"}, 3},
        {"an object that refers to itself", "/Bad 7 0 R", {},
            {"Failed to clone object: 7 (0)", "Failed to clone value of key in to be cloned dictionary: Self",
                "Failed to clone object: 7 (0)"}, 0},
        {"a stream's data must be there", "/Bad 11 0 R", {},
            {"Stream has no Length entry", "Failed to retrieve to be cloned stream's data",
                "Failed to clone object: 11 (0)"}, 0},
        {"of the width of the file", "/Bad 5 0 R", withData({}, 1),
            {"To be cloned raw stream as a different element size (1h (1)) than the current stream (4h (4))", object5},
            0},
        {"and be readable", "/Bad 5 0 R", withData({.read = 0}),
            {"Failed to read from to be cloned stream's data", object5}, 0},
        {"a string has text or bytes", "", withEntry(make<PDF::StringObj>(Ref<::String>())),
            {"Invalid String value to be cloned"}, 0},
        {"an array has no gaps", "", withEntry(PDF::Array::create({nullptr})),
            {"Element of to be cloned array is NULL: 0h (0)"}, 0},
    };
    for (const auto& [rule, entries, damage, lines, idsUsed] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document = target();
        const Ref<PDF::Document> foreign
            = open(foreignWith(entries).stream(5, "data").object(6, "<< /Good 1 >>").object(7, "<< /Self 7 0 R >>")
                    .object(11, "<< >>\nstream\nx\nendstream"));
        if (damage)
            damage(foreign);
        Lines expected = lines;
        expected.insert(expected.end(), {"Failed to clone value of key in to be cloned dictionary: Bad",
            "Failed to clone dictionary of to be cloned stream", "Failed to add foreign stream"});
        LogCapture log;
        EXPECT_EQ(codeOf(addBeneath(document, foreign)), ErrForeignStreamAdd);
        EXPECT_EQ(log.take(), expected);
        EXPECT_EQ(idsFrom(document, firstNewId), "");
        EXPECT_EQ(document->changed(), idsUsed != 0);
        EXPECT_EQ(nextId(document), firstNewId + idsUsed);
    }
}

TEST(Cloning, aLongChainOfReferencesNeedsNoStack)
{
    constexpr std::uint32_t links = 30000;
    PdfText file = foreignWith("/Next 5 0 R");
    for (std::uint32_t id = 5; id < 4 + links; ++id)
        file.object(id, "<< /Next " + std::to_string(id + 1) + " 0 R >>");
    for (const bool isCycle : {false, true}) {
        const Ref<PDF::Document> document = target();
        const Ref<PDF::Document> foreign = open(PdfText(file).object(4 + links, isCycle ? "[ 5 0 R ]" : "(end)"));
        onSmallStack([&] { EXPECT_EQ(addBeneath(document, foreign), !isCycle); });
        EXPECT_EQ(PDF::objectsOf(document).size(), isCycle ? 3 : 3 + links + 1);
    }
}

TEST(Cloning, theBytesOfAStreamAreReadOnceForAllItsClones)
{
    const Ref<PDF::Document> document
        = open(PdfText().pages("3 0 R 4 0 R 5 0 R").object(3, "<< >>").object(4, "<< >>").object(5, "<< >>"));
    const auto file = make<TestStripe>(
        PdfText().pages("3 0 R").object(3, "<< /Contents 4 0 R /Resources << /XObject << /Logo 5 0 R >> >> >>")
            .stream(4, "content").stream(5, "logo"));
    const Ref<PDF::Document> foreign = PDF::Document::create(file);
    const std::uint64_t readsBefore = file->reads;
    ASSERT_TRUE(document->addBackground(foreign, PDF::BackgroundMode::AllPages));
    EXPECT_EQ(file->reads - readsBefore, 2u) << "one for each of the streams";
    file->elements.clear();
    document->streamData(objectOf(document, 6)->valueAsStream(), false)->seek(3);
    const Ref<Interfaces::Stripe> second = document->streamData(objectOf(document, 7)->valueAsStream(), false);
    EXPECT_EQ(second->tell(), 0u) << "each has a position of its own";
    EXPECT_EQ(bytesOf(second), "logo") << "the file is needed no more";
}
