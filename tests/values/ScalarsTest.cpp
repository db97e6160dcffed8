#include <tests/support/Documents.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

Ref<TConstArray<std::uint8_t>> bytes(const std::string& text)
{
    return TConstArray<std::uint8_t>::create(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

} // namespace

TEST(Scalars, theirTextsAreForLogs)
{
    const std::pair<Ref<PDF::Value>, const char*> cases[] = {
        {make<PDF::NullObj>(), "Null"},
        {make<PDF::NumberObj>(-3, 25), "-3.25"},
        {PDF::String::create(bytes("\x41\x0A\xFF")), "410AFF"},
        {PDF::String::create(bytes("\xFE\xFF\x01")), "FEFF01"},
        {PDF::String::create(bytes(std::string("\xFF\xFE\x41\0", 4))), "A"},
        {PDF::String::create(bytes(std::string("\xFE\xFF\0\x41", 4))), "A"},
    };
    for (const auto& [value, shown] : cases)
        EXPECT_EQ(plain(value->asText()), shown);
}

TEST(Scalars, areEqualOnlyWithinTheirKind)
{
    const Ref<PDF::Value> all[] = {make<PDF::NullObj>(), make<PDF::BooleanObj>(true), make<PDF::BooleanObj>(false),
        make<PDF::NumberObj>(1, 5), make<PDF::NumberObj>(1, 50), make<PDF::NumberObj>(2, 5),
        make<PDF::NameObj>(text("abc")), PDF::String::create(text("abc")),
        PDF::String::create(bytes("abc")), PDF::String::create(bytes("abd")), make<PDF::ObjectRefObj>(4, 0),
        make<PDF::ObjectRefObj>(4, 1), make<PDF::ObjectRefObj>(5, 0)};
    for (const Ref<PDF::Value>& a : all) {
        EXPECT_FALSE(a->equal(nullptr));
        for (const Ref<PDF::Value>& b : all)
            EXPECT_EQ(a->equal(b), a == b) << plain(a->asText()) << " and " << plain(b->asText());
    }
    EXPECT_TRUE(all[0]->equal(make<PDF::NullObj>()));
    EXPECT_TRUE(all[3]->equal(make<PDF::NumberObj>(1, 5)));
    EXPECT_TRUE(all[8]->equal(PDF::String::create(bytes("abc"))));
}

TEST(PdfString, becomesBytesAbove127)
{
    EXPECT_TRUE(PDF::String::create(::String::create())->value()) << "the empty text is ASCII";
    EXPECT_TRUE(PDF::String::create(::String::create(127u))->value());
    const Ref<::String> text = ::String::create(U"a\u0080\u20AC\U0001F600");
    const Ref<PDF::String> string = PDF::String::create(text);
    EXPECT_FALSE(string->value());
    EXPECT_TRUE(string->equal(PDF::String::create(
        bytes(std::string("\xFE\xFF\0a\0\x80\x20\xAC\xD8\x3D\xDE\0", 12)))));
    EXPECT_TRUE(string->asText()->equals(text));
}

TEST(PdfString, theValueIsTheSameByItsQualifiedName)
{
    const Ref<::String> characters = text("a");
    EXPECT_TRUE(PDF::String::create(characters)->PDF::String::value() == characters);
    EXPECT_FALSE(PDF::String::create(bytes("a"))->PDF::String::value());
}

TEST(Scalars, creatorsRefuseNothingAndEmptiness)
{
    EXPECT_EQ(codeOf(PDF::Name::create(nullptr)), ErrNullArgument);
    EXPECT_EQ(codeOf(PDF::Name::create(::String::create())), ErrInvalidArgument);
    EXPECT_EQ(codeOf(PDF::String::create(Ref<::String>())), ErrNullArgument);
    EXPECT_EQ(codeOf(PDF::String::create(bytes(""))), ErrNullArgument);
    EXPECT_EQ(codeOf(make<PDF::StringObj>(bytes(""))->asText()), ErrNoResource);
}
