#include <tests/support/FormText.h>

#include <forms/Button.h>
#include <forms/Choice.h>
#include <forms/Signature.h>
#include <forms/Text.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Libraries::Files::PDF;

namespace {

TEST(Field, AnAttributeOfTheWrongKindIsToldOnceAndCountsAsAbsent)
{
    const auto notSet = Field::Quadding::NotSet;
    // Key, value, the kinds expected and got, and whether the attribute is absent.
    const std::tuple<std::string, const char*, const char*, std::function<bool(const Form&, const Field&)>> cases[] = {
        {"T", "/N", "41", [](auto&, auto& field) { return !field.name(); }},
        {"DA", "<< >>", "46", [](auto&, auto& field) { return !field.defaultAppearance(); }},
        {"Q", "(0)", "34", [=](auto&, auto& field) { return field.quadding() == notSet; }},
        {"Q", "true", "32", [](auto& form, auto&) { return !form.quadding(); }},
        {"CO", "<< >>", "86", [](auto& form, auto&) { return !form.calculationOrder(); }},
        {"NeedAppearances", "1", "23", [](auto& form, auto&) { return !form.needAppearances(); }},
    };
    for (const auto& [key, value, kinds, isAbsent] : cases) {
        const std::string entry = "/" + key + " " + value;
        SCOPED_TRACE(entry);
        const Ref<Form> form = open(formFile("/Fields [ 3 0 R ] " + entry, {"<< /FT /Tx " + entry + " >>"}))->form();
        LogCapture log(formFilter);
        EXPECT_TRUE(isAbsent(*form, *form->field(0)) && isAbsent(*form, *form->field(0)));
        const auto number = [](char digit) { return std::string{digit, 'h', ' ', '(', digit, ')'}; };
        EXPECT_EQ(log.take(), Lines{"Unexpected type for value " + key + "; expected = " + number(kinds[0])
                                  + ", got = " + number(kinds[1])});
    }
}

TEST(Field, AQuaddingOutsideTheThreeIsToldOnceAndNotSet)
{
    EXPECT_EQ(OneField("<< /FT /Tx /Q 0 >>").field->quadding(), Field::Quadding::Left);
    EXPECT_EQ(OneField("<< /FT /Tx /Q 1 >>").field->quadding(), Field::Quadding::Centred);
    const OneField one("<< /FT /Tx /Q 4 >>");
    LogCapture log(formFilter);
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(one.field->quadding(), Field::Quadding::NotSet);
    EXPECT_EQ(log.take(), Lines{"Unexpected quadding value: 4h (4)"});
}

TEST(Field, AttributesStayAsTheyWereReadFirst)
{
    const OneField one("<< /FT /Tx /T (a) /TU (b) /TM (c) /DA (d) /DR << /X 1 >> /Q 2.7 /Ff -1 >>");
    const Field& field = *one.field;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(shown(field.name()) + shown(field.alternateName()) + shown(field.mappingName()), "abc");
        EXPECT_EQ(shown(field.defaultAppearance()) + shown(field.defaultResources()), "d<< X -> 1.0 >>");
        EXPECT_EQ(field.quadding(), Field::Quadding::Right);
        EXPECT_EQ(field.flags(), 0xFFFFFFFF);
        for (const char* key : {"T", "TU", "TM", "DA", "DR", "Q", "Ff"})
            one.entries->set(text(key), nullptr);
    }
    const Ref<Form> form = open(formFile("/DA (d) /DR << >> /CO [ 1 ] /Q 7 /NeedAppearances true", {}))->form();
    EXPECT_EQ(shown(form->defaultAppearance()) + shown(form->defaultResources()), "d<< >>");
    EXPECT_EQ(shown(form->calculationOrder()) + shown(form->quadding()), "[1.0 ]7.0");
    EXPECT_TRUE(form->needAppearances());
}

TEST(Field, TheDefaultValueIsOfTheKindOfTheField)
{
    const auto defaultOf = []<class Kind>(const std::string& entries, const Ref<Kind>&) {
        return shown(OneField("<< " + entries + " >>").field.cast<Kind>()->defaultValue());
    };
    EXPECT_EQ(defaultOf("/FT /Btn /DV /On", Ref<Fields::Button>()), "On");
    EXPECT_EQ(defaultOf("/FT /Btn /DV (On)", Ref<Fields::Button>()), "(null)");
    EXPECT_EQ(defaultOf("/FT /Tx /DV (text)", Ref<Fields::Text>()), "text");
    EXPECT_EQ(defaultOf("/FT /Ch /DV [ (a) ]", Ref<Fields::Choice>()), "[a ]");
}

TEST(Field, EachKindHasItsNumberAndItsKids)
{
    const Ref<Document> document = open(formFile("/Fields [ 3 0 R 4 0 R 5 0 R 6 0 R 7 0 R ]",
        {"<< >>", "<< /FT /Btn >>", "<< /FT /Tx >>", "<< /FT /Ch >>", "<< /FT /Sig /Kids [ 3 0 R ] >>"}));
    const Ref<Form> form = document->form();
    for (std::uint32_t i = 0; i < 5; ++i)
        EXPECT_EQ(std::uint32_t(form->field(i)->type()), i + 1);
    const Ref<Fields::Signature> last = form->field(4).cast<Fields::Signature>();
    EXPECT_TRUE(last->child(0) && !form->field(5));
    EXPECT_EQ(codeOf(last->child(1)), ErrOutOfRange);
}

TEST(Field, WhatIsSetIsSaved)
{
    const OneField one("<< /FT /Tx /V (old) >>");
    EXPECT_EQ(codeOf(one.field->appearance()), ErrNotAvailable);
    EXPECT_TRUE(one.field->setAppearance(Name::create(text("Look"))));
    EXPECT_TRUE(one.field.cast<Fields::Text>()->setValue(PDF::String::create(text("new"))));
    const Ref<TestStripe> out = make<TestStripe>("");
    ASSERT_TRUE(one.document->write(out));
    const Ref<Field> field = open(out->bytes())->form()->field(0);
    EXPECT_EQ(shown(field.cast<Fields::Text>()->value()) + shown(field->appearance()), "newLook");
}

} // namespace
