#include <document/Editing.h>

#include <tests/support/Pages.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

Ref<PDF::ObjectRef> reference(std::uint32_t id)
{
    return make<PDF::ObjectRefObj>(id, std::uint16_t(0));
}

const std::string source = PdfText()
    .pages("3 0 R")
    .object(3, "<< /Type /Page /Parent 2 0 R >>")
    .object(4, "<< /Twice [ 5 0 R 5 0 R ] /Page 3 0 R /Nothing 99 0 R /Self 4 0 R >>")
    .object(5, "<< /Back [ [ 4 0 R ] ] /Data 6 0 R >>")
    .stream(6, "data", "/Length 7 0 R /Other 5 0 R")
    .object(7, "4");

} // namespace

TEST(Editing, copiesWhatIsReferredToOnceAndNotThePages)
{
    const auto document = Tests::open(PdfText().pages());
    auto foreign = Tests::open(source);
    PDF::NewObjects objects(document);
    PDF::ValueCopying copying(objects, foreign);
    const auto copy = copying.copy(reference(4));
    EXPECT_EQ(valueText(document, objects.resolve(copy)),
        "<< /Nothing null /Page null /Self 3 0 R /Twice [ 4 0 R 4 0 R ] >>");
    EXPECT_FALSE(document->changed());
    EXPECT_EQ(idsFrom(document, 3), "");
    foreign = nullptr;
    ASSERT_TRUE(objects.commit());
    EXPECT_TRUE(document->changed());
    EXPECT_EQ(idsFrom(document, 3), "3 4 5");
    EXPECT_EQ(objectText(document, 4), "<< /Back [ [ 3 0 R ] ] /Data 5 0 R >>");
    EXPECT_EQ(objectText(document, 5), "<< /Length 4 /Other 4 0 R >>\nstream\ndata\nendstream");
    EXPECT_EQ(PDF::addObject(document, reference(1))->id(), 6u);
}

TEST(Editing, aReplacementTakesThePlaceOfAReference)
{
    const auto document = Tests::open(PdfText().pages());
    const auto foreign = Tests::open(source);
    PDF::NewObjects objects(document);
    PDF::ValueCopying copying(objects, foreign);
    copying.replace(objectOf(foreign, 3), reference(2));
    copying.replace(objectOf(foreign, 5), reference(1));
    const auto copy = copying.copy(objectOf(foreign, 4)->value());
    EXPECT_EQ(valueText(document, copy), "<< /Nothing null /Page 2 0 R /Self 3 0 R /Twice [ 1 0 R 1 0 R ] >>");
}

TEST(Editing, inOneDocumentReferencesStay)
{
    const auto document = Tests::open(source);
    PDF::NewObjects objects(document);
    PDF::ValueCopying copying(objects, document);
    const auto original = objectOf(document, 4)->value();
    const auto copy = copying.copy(original);
    EXPECT_TRUE(copy != original && copy->equal(original));
}

TEST(Editing, dataThatCantBeReadLeavesTheDocumentAsItWas)
{
    const auto stripe = make<TestStripe>(source, Fault{.read = 0, .isLasting = true});
    stripe->isSound = true;
    const auto foreign = PDF::Document::create(stripe);
    stripe->isSound = false;
    const auto document = Tests::open(PdfText().pages());
    PDF::NewObjects objects(document);
    Error::set(0);
    EXPECT_FALSE(PDF::ValueCopying(objects, foreign).copy(reference(4)));
    EXPECT_NE(Error::get(), 0u);
    EXPECT_FALSE(document->changed());
    EXPECT_EQ(idsFrom(document, 3), "");
}

TEST(Editing, objectsThatSomethingElseAddedMeanwhileEndACommit)
{
    const auto document = Tests::open(PdfText().pages());
    PDF::NewObjects objects(document);
    objects.add(reference(1));
    PDF::addObject(document, reference(2));
    EXPECT_FALSE(objects.commit());
    EXPECT_EQ(Error::get(), std::uint32_t(ErrInvalidArgument));
    EXPECT_EQ(idsFrom(document, 3), "3");
}

TEST(Editing, makesNothingOfNothing)
{
    Error::set(0);
    EXPECT_FALSE(PDF::createStream(nullptr, {1, 2}));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNullArgument));
    EXPECT_FALSE(PDF::addObject(nullptr, reference(1)) || PDF::addObject(Tests::open(source), nullptr));
}

// Each object twice in the one before it, and a chain that no walk may follow by recursion.
TEST(Editing, copiesInTimeThatGrowsWithTheObjects)
{
    PdfText text;
    constexpr unsigned count = 100000;
    text.pages();
    for (unsigned id = 3; id < count; ++id)
        text.object(id, "[ " + std::to_string(id + 1) + " 0 R " + std::to_string(id + 1) + " 0 R ]");
    const auto foreign = Tests::open(text);
    const auto document = Tests::open(PdfText().pages());
    PDF::NewObjects objects(document);
    ASSERT_TRUE(PDF::ValueCopying(objects, foreign).copy(reference(3)));
    ASSERT_TRUE(objects.commit());
    EXPECT_EQ(PDF::objectsOf(document).size(), 2u + count - 3);
}
