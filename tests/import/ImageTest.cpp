#include <import/Image.h>
#include <import/Stop.h>

#include <tests/support/FlateData.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

Ref<Host::FileStripe> fileOf(const std::string& bytes)
{
    const TestFolder folder; // the file stays open
    return *Host::FileStripe::open(folder.put("file", bytes));
}

std::string bytesFrom(Interfaces::Stripe& stripe, std::uint64_t position, std::uint64_t count)
{
    std::string bytes(count, '\0');
    stripe.seek(position);
    bytes.resize(dynamic_cast<Interfaces::ByteReading&>(stripe).readBytes(bytes.data(), count));
    return bytes;
}

} // namespace

TEST(Image, isTextAndPartsOfTheOriginal)
{
    const std::string original = incompressible(100'000);
    for (const std::size_t textSize : {100u, (64u << 20) + 100u}) { // the second one is kept in a file
        Import::Image image(fileOf(original), ~std::uint64_t(0));
        std::string expected;
        const auto add = [&](const std::string& text) { image.add(text), expected += text; };
        const auto addOriginal = [&](std::size_t offset, std::size_t length) {
            image.addOriginal(offset, length), expected += original.substr(offset, length);
        };
        add("first ");
        addOriginal(40'000, 50'000);
        addOriginal(10, 0);
        addOriginal(10, 10);
        const std::uint64_t placeOfText = image.textSize();
        const std::size_t place = expected.size();
        add("later ");
        add(std::string(textSize, 'x'));
        image.replaceText(placeOfText, "sooner");
        expected.replace(place, 6, "sooner");
        add("behind");
        image.replaceText(image.textSize() - 6, "before");
        expected.replace(expected.size() - 6, 6, "before");
        addOriginal(99'999, 1);
        ASSERT_EQ(image.size(), expected.size());
        const Ref<Interfaces::Stripe> stripe = image.toStripe();
        ASSERT_EQ(stripe->size(), expected.size());
        EXPECT_TRUE(bytesFrom(*stripe, 0, expected.size()) == expected);
        for (const std::size_t position :
            {std::size_t(0), std::size_t(5), std::size_t(50'000), place, expected.size() - 3})
            EXPECT_EQ(bytesFrom(*stripe, position, 3), expected.substr(position, 3)) << position;
        EXPECT_EQ(bytesFrom(*stripe, expected.size(), 1), "");
    }
}

TEST(Image, fitsItsLimit)
{
    Import::Image image(fileOf("original"), 10);
    image.add("12345");
    image.addOriginal(0, 5);
    EXPECT_THROW(image.add("6"), Import::Stop);
    EXPECT_THROW(image.addOriginal(0, 1), Import::Stop);
}

TEST(Image, needsAFolderForItsFile)
{
    Import::Image image(fileOf("original"), ~std::uint64_t(0));
    ::setenv("TMPDIR", "/nowhere", 1);
    try {
        image.add(std::string((64u << 20) + 1, 'x'));
        ADD_FAILURE();
    } catch (const Import::Stop& stop) {
        EXPECT_EQ(stop.refusal.message, "no temporary file can be made: No such file or directory");
    }
    ::unsetenv("TMPDIR");
}
