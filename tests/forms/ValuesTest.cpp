#include <tests/support/FormText.h>
#include <tests/support/KeysAlone.h>

#include <forms/Button.h>
#include <forms/Choice.h>
#include <forms/Text.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Libraries::Files::PDF;

namespace {

TEST(Button, ValueAndAppearanceStateAreSetApart)
{
    const Ref<Name> yes = Name::create(text("Yes"));
    const Ref<Name> empty = make<NameObj>(::String::create());
    const Ref<Name> textless = make<NameObj>(nullptr);
    const std::tuple<const char*, Ref<Name>, std::uint32_t, const char*> cases[] = {
        {"", yes, 0, "Yes"},
        {"", nullptr, 0, "(null)"},
        {"/Ff 65536", yes, ErrPushButton, "Off"},
        {"/Ff 65537", nullptr, 0, "(null)"},
        {"", empty, ErrInvalidArgument, "Off"},
        {"", textless, ErrInvalidArgument, "Off"},
    };
    for (const auto& [flags, name, code, after] : cases)
        for (const bool isValue : {true, false}) {
            SCOPED_TRACE(flags + shown(name) + (isValue ? " V" : " AS"));
            const OneField one(std::string("<< /FT /Btn /V /Off /AS /Off ") + flags + " >>");
            const Ref<Fields::Button> button = one.field.cast<Fields::Button>();
            EXPECT_EQ(codeOf(isValue ? button->setValue(name) : button->setAppearanceState(name)), code);
            EXPECT_EQ(one.document->changed(), code == 0);
            EXPECT_EQ(shown(button->value()), isValue ? after : "Off");
            EXPECT_EQ(shown(button->appearanceState()), isValue ? "Off" : after);
        }
}

TEST(Button, StatesComeFromOptionsOrElseFromTheNormalAppearance)
{
    const std::string looks = " /AP << /N << /Yes 3 0 R /Off 3 0 R >> >>";
    // Entries, states, the code that is left, and the line.
    const std::tuple<std::string, const char*, std::uint32_t, const char*> cases[] = {
        {"/Opt [ /b /a ]" + looks, "b a ", 0, ""},
        {"/Opt [ /b (a) ] /T (x)" + looks, "", ErrNoResource,
            "Failed to convert Opt entry 1h (1) to Name for field x"},
        {"/Opt [ ]" + looks, "Off Yes ", 0, "No entries in Opt array for field <unknown>"},
        {"/Opt /a" + looks, "Off Yes ", ErrWrongType, ""},
        {looks, "Off Yes ", ErrNotAvailable, ""},
        {"", "", ErrNotAvailable, "No AP dictionary for field <unknown>"},
        {"/AP 3 0 R", "", ErrWrongType, "No AP dictionary for field <unknown>"},
        {"/T <FEFF0041> /AP << /N 3 0 R >>", "", ErrWrongType, "No N dictionary in AP dictionary for field A"},
        {"/Opt /a /AP << /N << >> >>", "", ErrWrongType, "Empty N dictionary in AP dictionary for field <unknown>"},
    };
    for (const auto& [entries, states, code, line] : cases) {
        SCOPED_TRACE(entries);
        const OneField one("<< /FT /Btn " + entries + " >>");
        LogCapture log(formFilter, 3);
        Error::set(0);
        std::string got;
        for (const Ref<Name>& state : one.field.cast<Fields::Button>()->states())
            got += shown(state) + " ";
        EXPECT_EQ(Error::get(), code);
        EXPECT_EQ(got, states);
        EXPECT_EQ(log.take(), Lines(*line ? 1 : 0, line));
    }
}

TEST(Button, StatesOfAnApplicationsOwnDictionaryAreTheKeysThatMakeNames)
{
    using Keys = std::vector<Ref<::String>>;
    const std::tuple<const char*, Ref<TVector<Ref<::String>>>, std::string> cases[] = {
        {"no list", nullptr, ""},
        {"no usable key", make<TVector<Ref<::String>>>(Keys{nullptr, text("")}), ""},
        {"one", make<TVector<Ref<::String>>>(Keys{nullptr, text("Yes"), text("")}), "Yes "},
    };
    for (const auto& [what, keys, states] : cases) {
        SCOPED_TRACE(what);
        const OneField one("<< /FT /Btn /AP << >> >>");
        const Ref<Dictionary> own = make<KeysAlone>(keys);
        EXPECT_TRUE(one.entries->findAsDictionary(text("AP"), false)->set(text("N"), own));
        EXPECT_EQ(shown(own).substr(0, 2), "<<"); // a text for logs needs no list either
        LogCapture log(formFilter, 3);
        std::string got;
        for (const Ref<Name>& state : one.field.cast<Fields::Button>()->states())
            got += shown(state) + " ";
        EXPECT_EQ(got, states);
        EXPECT_EQ(log.take(),
            Lines(states.empty() ? 1 : 0, "Empty N dictionary in AP dictionary for field <unknown>"));
    }
}

TEST(Text, AValueLongerThanTheLimitLeavesTheOldOne)
{
    const auto characters = [](std::size_t count) { return PDF::String::create(text(std::string(count, 'x'))); };
    const auto bytes = [](std::size_t count) {
        const std::vector<std::uint8_t> zeros(count);
        return PDF::String::create(TConstArray<std::uint8_t>::create(zeros.data(), count));
    };
    const Ref<PDF::String> neither = make<StringObj>(Ref<::String>());
    const std::tuple<std::string, Ref<PDF::String>, bool> cases[] = {
        {"/MaxLen 5", characters(5), true},
        {"/MaxLen 5", characters(6), false},
        {"/MaxLen 5.9", characters(6), false},
        {"/MaxLen 5", bytes(13), true}, // 5 characters; the odd byte counts for nothing
        {"/MaxLen 5", bytes(14), false},
        {"/MaxLen 5", neither, false},
        {"/MaxLen 5", nullptr, true},
        {"/MaxLen 0", characters(500), true},
        {"", characters(6), true},
        {"/MaxLen -1", characters(0), false},
        {"/MaxLen -1", bytes(1), true}, // counts as -1
        {"/MaxLen -2", bytes(1), false},
        {"/MaxLen 4294967296", characters(1), true},
    };
    for (const auto& [limit, value, isTaken] : cases) {
        SCOPED_TRACE(limit);
        const OneField one("<< /FT /Tx /V (old) /Ff 1 " + limit + " >>");
        const Ref<Fields::Text> field = one.field.cast<Fields::Text>();
        const Ref<PDF::String> old = field->value();
        EXPECT_EQ(codeOf(field->setValue(value)), isTaken ? 0 : std::uint32_t(ErrInvalidArgument));
        EXPECT_TRUE(field->value() == (isTaken ? value : old));
        EXPECT_EQ(one.document->changed(), isTaken);
    }
}

TEST(Choice, AValueIsBroughtToItsShapeOrRefused)
{
    const Ref<Value> a = PDF::String::create(text("a"));
    const Ref<Value> b = PDF::String::create(text("b"));
    const Ref<Value> number = make<NumberObj>(1, 0);
    const auto array = [](std::vector<Ref<Value>> elements) { return Ref<Value>(Array::create(elements)); };
    const std::string single = "/T (name)";
    const std::string multi = "/Ff 2097152";
    const char* const noString = "Non-string value not supported for single entry choice field: ";
    // Entries, new value, the line to which the address of the name is added, and the value afterwards.
    const std::tuple<std::string, Ref<Value>, const char*, std::string> cases[] = {
        {single, a, "", "a"},
        {single, nullptr, "", "(null)"},
        {single, array({a}), noString, "old"},
        {multi, a, "", "a"},
        {multi, number, "Multi-select field requires either an Array or String value: ", "old"},
        {multi, array({}), "Assuming unset value for empty array for field: ", "(null)"},
        {multi + single, array({b}), "Keeping only single value of array for field: ", "b"},
        {multi, array({a, b}), "", "[ab ]"},
        {multi + single, array({a, number, nullptr}), "Element 1h (1) of new value is not a String for ", "old"},
        {multi, array({nullptr}), "Element 0h (0) of new value is not a String for ", "old"},
    };
    for (const auto& [entries, value, line, after] : cases) {
        SCOPED_TRACE(entries + line + after);
        const OneField one("<< /FT /Ch /V (old) /I [ 7 ] /Opt [ (x) ] " + entries + " >>");
        const Ref<Fields::Choice> field = one.field.cast<Fields::Choice>();
        const bool isTaken = after != "old";
        const Ref<StringPrinter> printer = StringPrinter::create();
        printer->print(line).hex().print(static_cast<const void*>(field->name().get()));
        LogCapture log(formFilter, 3);
        EXPECT_EQ(codeOf(field->setValue(value)), isTaken ? 0 : std::uint32_t(ErrInvalidArgument));
        EXPECT_EQ(log.take(), Lines(*line ? 1 : 0, plain(printer->take())));
        EXPECT_EQ(shown(field->value()), after);
        EXPECT_EQ(shown(field->selectedIndices()) + shown(field->options()), "[7.0 ][x ]");
        EXPECT_EQ(one.document->changed(), isTaken);
    }
}

} // namespace
