#include <tests/support/FormText.h>

#include <host/exchange/Fdf.h>
#include <host/fields/Fill.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

std::string fdf(const std::string& fields, const std::string& more = "")
{
    return "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields " + fields + " >> >>\nendobj\n" + more
        + "trailer\n<< /Root 1 0 R >>\n%%EOF\n";
}

// "path=text" of each value with "+" between the texts of a list, or why there are none.
std::string shown(const Result<FieldValues>& values)
{
    if (!values)
        return values.refusal().message;
    std::string out;
    for (const auto& [path, value] : *values) {
        out += (out.empty() ? "" : " ") + path + "=";
        if (const auto* text = std::get_if<std::string>(&value))
            out += *text;
        else
            for (const std::string& each : std::get<FieldTexts>(value))
                out += each + "+";
    }
    return out;
}

std::string repeated(const std::string& text, std::size_t count)
{
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

} // namespace

TEST(Fdf, valuesAreReadByTheRulesOfTheFormat)
{
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"escapes", fdf("[ << /T (a) /V (C:\\\\dir\\\\ \\(x\\) \\101\\\n) >> ]"), "a=C:\\dir\\ (x) A"},
        {"names and lists", fdf("[ << /T (a) /V /J#61 >> << /T (b) /V [ (x) (y) ] >> ]"), "a=Ja b=x+y+"},
        {"numbers by their digits", fdf("[ << /T (a) /V 1.10 >> ]"), "a=1.10"},
        {"encodings", fdf("[ << /T <FEFF0142> /V (\x80) >> ]"), "\xC5\x82=\xE2\x80\xA2"},
        {"an encoding of its own", fdf("[ << /T (a) /V (\xC5\x82) >> ] /Encoding /utf_8"), "a=\xC5\x82"},
        {"nested and whole names", fdf("[ << /T (a) /Kids [ << /T (b.c) /V (x) >> << /V (y) >> ] >> ]"), "a=y a.b.c=x"},
        {"no value", fdf("[ << /T (a) >> << /T (b) /V null >> << /T (c) /V 9 0 R >> << /T (d) /V / >> ]"), ""},
        {"references, and the last object of a number",
            fdf("2 0 R", "2 0 obj [ 3 0 R ] endobj 3 0 obj << /V (x) /T 4 0 R >> endobj 4 0 obj (old) endobj "
                         "4 1 obj (a) endobj\n"), "a=x"},
        {"streams are passed over",
            fdf("[ << /T (a) /V (x) >> ]", "5 0 obj << /Length 9 >> stream\n]] (( >> \nendstream endobj\n"), "a=x"},
        {"the same value twice", fdf("[ << /T (a) /V (x) >> << /T (a) /V (x) >> ]"), "a=x"},
    };
    for (const auto& [rule, file, result] : cases)
        EXPECT_EQ(shown(readFdf(file)), result) << rule;
}

TEST(Fdf, brokenFilesAreRefused)
{
    const std::string circle = "2 0 obj << /T (a) /Kids [ 2 0 R ] >> endobj\n";
    const std::string deep = repeated("<< /T (a) /Kids [ ", 100000) + repeated("] >> ", 100000);
    const std::string text = "3 0 obj (" + std::string(100000, 'x') + ") endobj\n";
    const std::string nothing = "3 0 obj (" + repeated("\\\n", 1000000) + ") endobj\n";
    const std::string all = repeated(" 3 0 R", 100000);
    const std::tuple<std::string, std::string> cases[] = {
        {"", "not an FDF file"},
        {"%PDF-1.4\ntrailer << /Root << >> >>", "not an FDF file"},
        {fdf("[ << /T (a) /V (x >> ]"), "without its partner"},
        {fdf("[ << /T (a) /V (x) ] >>"), "without its partner"},
        {fdf("[ << /T (a) /V (x) >> << /T (a) /V (y) >> ]"), "a has two values"},
        {fdf("[ << /T (a) /V << /Type /Sig >> >> ]"), "a: the value is no text"},
        {fdf("[ << /T (a) /V (\x83\x41) >> ] /Encoding /Shift-JIS"), "a: the text is not in the encoding Shift-JIS"},
        {fdf("[ << /T (a) /V (\xFF\xC5) >> ] /Encoding /utf-8"), "a: the text is not in the encoding utf-8"},
        {fdf("[ << /V (x) >> ]"), "has a value and no name"},
        {fdf("[ 7 ]"), "is no dictionary"},
        {fdf("[ 2 0 R ]", circle), "within itself"},
        {fdf("[ 2 0 R ]", "2 0 obj 2 0 R endobj\n"), "is no dictionary"},
        {fdf("[ " + deep + " ]"), "too many levels"},
        {fdf("[ << /T (" + std::string(5000, 'a') + ") /V (x) >> ]"), "too long for a name"},
        {fdf("[ << /T (a) /V [" + all + " ] >> ]", text), "must repeat them"},
        {fdf("[ << /T (a) /V [" + all + " ] >> ]", nothing), "must repeat them"},
        {"trailer << /Root 1 0 R /Encrypt << >> >>", "encrypted"},
    };
    for (const auto& [file, message] : cases)
        EXPECT_NE(shown(readFdf(file)).find(message), std::string::npos)
            << message << ": " << shown(readFdf(file)).substr(0, 200);
}

TEST(Fdf, aWrittenFileGivesAllValuesBack)
{
    std::string every; // of the first characters, all that PDF strings treat in their own way among them
    for (char c = 1; c < 127; ++c)
        every += c;
    FormFields form;
    const auto add = [&](const std::string& path, FieldKind kind, std::optional<FieldTexts> value) {
        form.fields.emplace_back();
        form.fields.back().path = path;
        form.fields.back().kind = kind;
        form.fields.back().value = std::move(value);
    };
    add("a.b", FieldKind::Text, {{"C:\\dir\\ ((x)"}});
    add("a.b.c", FieldKind::Text, {{every}});
    add("a.\xC5\x82..d.", FieldKind::Text, {{std::string("\0\xF0\x9F\x98\x80\xEF\xBF\xBF", 8)}});
    add("a.d", FieldKind::CheckBox, {{"Ja #1/\xC3\xA4"}});
    add("a.d", FieldKind::Text, {{"another of the same name"}});
    add(repeated("x.", 2000) + "y", FieldKind::ListBox, FieldTexts{"one", "\xE6\x9D\xB1"});
    add("none", FieldKind::ListBox, FieldTexts{});
    add("absent", FieldKind::Text, {});
    add("push", FieldKind::PushButton, {{"x"}});

    const std::string file = writeFdf(form);
    const auto values = readFdf(file);
    ASSERT_TRUE(values) << values.refusal().message;
    EXPECT_EQ(values->size(), 6u);
    for (const FormField& field : form.fields) {
        const bool isLeftOut =
            field.kind == FieldKind::PushButton || field.value == FieldTexts{"another of the same name"};
        if (!field.value || isLeftOut)
            continue;
        ASSERT_TRUE(values->contains(field.path)) << field.path;
        const bool isOne = field.value->size() == 1;
        EXPECT_EQ(values->at(field.path), isOne ? FieldValue(field.value->front()) : FieldValue(*field.value));
    }
    EXPECT_NE(file.find("<< /T (absent) >>"), std::string::npos);
    EXPECT_NE(file.find("/V /Ja#20#231#2F#C3#A4"), std::string::npos);
}
