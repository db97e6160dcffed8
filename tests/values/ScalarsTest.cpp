#include <values/BooleanObj.h>
#include <values/NameObj.h>
#include <values/NullObj.h>
#include <values/NumberObj.h>
#include <values/ObjectObj.h>
#include <values/ObjectRefObj.h>
#include <values/StringObj.h>

#include "../support/LogCapture.h"

#include <gtest/gtest.h>

using namespace Libraries::Files;
using Tests::plain;

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
        {make<PDF::BooleanObj>(false), "false"},
        {make<PDF::NumberObj>(5, 0), "5.0"},
        {make<PDF::NumberObj>(-3, 25), "-3.25"},
        {make<PDF::NameObj>(::String::create("A#20B")), "A#20B"},
        {make<PDF::ObjectRefObj>(12, 3), "12 (3)"},
        {PDF::String::create(::String::create("abc")), "abc"},
        {PDF::String::create(bytes("\x41\x0A\xFF")), "410AFF"},
        {PDF::String::create(bytes("\xFE\xFF\x01")), "FEFF01"},
        {PDF::String::create(bytes(std::string("\xFF\xFE\x41\0", 4))), "A"},
        {PDF::String::create(bytes(std::string("\xFE\xFF\0\x41", 4))), "A"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(plain(value->asText()), text);
        EXPECT_FALSE(value->changed());
    }
}

TEST(Scalars, areEqualOnlyWithinTheirKind)
{
    const Ref<PDF::Value> all[] = {make<PDF::NullObj>(), make<PDF::BooleanObj>(true), make<PDF::BooleanObj>(false),
        make<PDF::NumberObj>(1, 5), make<PDF::NumberObj>(1, 50), make<PDF::NumberObj>(2, 5),
        make<PDF::NameObj>(::String::create("abc")), PDF::String::create(::String::create("abc")),
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
    const Ref<PDF::String> accented = PDF::String::create(::String::create(0xE9u));
    EXPECT_FALSE(accented->value());
    ASSERT_EQ(accented->data()->size(), 4u);
    EXPECT_TRUE(Mem::equal(accented->data()->data(), "\xFE\xFF\0\xE9", 4));
    const Ref<::String> mixed = ::String::create(U"a\u20AC\U0001F600");
    EXPECT_TRUE(PDF::String::create(mixed)->asText()->equals(mixed));
    EXPECT_EQ(PDF::String::create(mixed)->data()->size(), 10u);
}

TEST(Scalars, creatorsRefuseNothingAndEmptiness)
{
    const auto refusal = [](bool isMade) {
        EXPECT_FALSE(isMade);
        return Error::get();
    };
    EXPECT_EQ(refusal(bool(PDF::Name::create(nullptr))), std::uint32_t(ErrNullArgument));
    EXPECT_EQ(refusal(bool(PDF::Name::create(::String::create()))), std::uint32_t(ErrInvalidArgument));
    EXPECT_EQ(refusal(bool(PDF::String::create(Ref<::String>()))), std::uint32_t(ErrNullArgument));
    EXPECT_EQ(refusal(bool(PDF::String::create(bytes("")))), std::uint32_t(ErrNullArgument));
    EXPECT_EQ(refusal(bool(make<PDF::StringObj>(bytes(""))->asText())), std::uint32_t(ErrNoResource));
}
