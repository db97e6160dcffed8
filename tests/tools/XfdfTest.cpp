#include <gtest/gtest.h>

#include <tools/Xfdf.h>

using namespace Tools;

TEST(Xfdf, charactersThatXmlDoesNotTakeAreRefused)
{
    Host::FormFields form;
    form.fields.emplace_back();
    Host::FormField& field = form.fields.back();
    field.path = "a.b";
    field.kind = Host::FieldKind::Text;
    for (const std::string& text : {std::string("x\x01"), std::string("\xEF\xBF\xBE"), std::string(1, '\0')}) {
        field.value = Host::FieldTexts{text};
        EXPECT_NE(writeXfdf(form).refusal().message.find("a.b: XML doesn't take the character U+"), std::string::npos);
    }
}

#ifdef FILES_PDF_XFDF

namespace {

std::string xfdf(const std::string& fields, const std::string& before = "")
{
    return before + "<xfdf xmlns='http://ns.adobe.com/xfdf/'><f href='a.pdf'/><fields>" + fields + "</fields></xfdf>";
}

std::string shown(const Host::Result<Host::FieldValues>& values)
{
    if (!values)
        return values.refusal().message;
    std::string out;
    for (const auto& [path, value] : *values) {
        out += path + "=";
        if (const auto* text = std::get_if<std::string>(&value))
            out += *text + ";";
        else
            for (const std::string& each : std::get<Host::FieldTexts>(value))
                out += each + "+;";
    }
    return out;
}

// Two bytes for each character of a text in ASCII, the low one first.
std::string widened(const std::string& text)
{
    std::string out = "\xFF\xFE";
    for (const char c : text)
        out.append({c, '\0'});
    return out;
}

} // namespace

TEST(Xfdf, valuesAreRead)
{
    const std::pair<std::string, const char*> cases[] = {
        {xfdf("<field name='a'><value>x</value></field>"), "a=x;"},
        {xfdf("<field name='a'><field name='b.c'><value> </value></field><value/></field>"), "a=;a.b.c= ;"},
        {xfdf("<field name='a'><value>x</value><value>y</value></field><field name='b'/>"), "a=x+;y+;"},
        {xfdf("<field name='&lt;&#10;&#x142;'><value>&amp;amp;<![CDATA[&lt;]]><!-- c -->&quot;</value></field>"),
            "<\n\xC5\x82=&amp;&lt;\";"},
        {xfdf("<field name='a'><value>\xE4</value></field>", "<?xml version='1.0' encoding='ISO-8859-1'?>"),
            "a=\xC3\xA4;"},
        {widened(xfdf("<field name='a'><value>&#128512;</value></field>", "<?xml version='1.0' encoding='UTF-16'?>")),
            "a=\xF0\x9F\x98\x80;"},
    };
    for (const auto& [file, values] : cases)
        EXPECT_EQ(shown(readXfdf(file)), values);
}

TEST(Xfdf, brokenFilesAreRefused)
{
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<field name='a'>";
    std::string closed = deep;
    for (int i = 0; i < 100000; ++i)
        closed += "</field>";
    const std::string bomb = "<!DOCTYPE xfdf [<!ENTITY a 'x'><!ENTITY b '&a;&a;&a;'>]>";
    const std::pair<std::string, const char*> cases[] = {
        {"", "byte 0: No document element"},
        {"<fdf/>", "not an XFDF file"},
        {xfdf("<field name='a'><value>x</field>"), "Start-end tags mismatch"},
        {xfdf("<field name='a'><value>&b;</value></field>", bomb), "the file has a document type"},
        {xfdf("<field name='a'><value>&b;</value></field>"), "a: an entity that XML doesn't have: &b;"},
        {xfdf("<field name='&#xD800;'/>"), "an entity that XML doesn't have"},
        {xfdf("<field name='a'><value>&#0;&#99999999999;</value></field>"), "an entity that XML doesn't have"},
        {xfdf("<field name='a'><value>\xE4</value></field>"), "a: a text is not in the encoding of the file"},
        {xfdf("", "<?xml version='1.0' encoding='Shift_JIS'?>"), "isn't known: Shift_JIS"},
        {xfdf("<field name='a'><value>x</value></field><field name='a'><value>y</value></field>"), "a has two values"},
        {xfdf("<field><value>x</value></field>"), "a field has a value and no name"},
        {xfdf(deep), "Start-end tags mismatch"},
        {xfdf(closed), "nested too deep"},
        {xfdf("<field name='" + std::string(5000, 'a') + "'/>"), "too long for a name"},
    };
    for (const auto& [file, message] : cases)
        EXPECT_NE(shown(readXfdf(file)).find(message), std::string::npos)
            << message << ": " << shown(readXfdf(file)).substr(0, 200);
}

TEST(Xfdf, aWrittenFileGivesAllValuesBack)
{
    std::string every = "\t\n\r\r\n";
    for (char c = ' '; c < 127; ++c)
        every += c;
    const std::string name = "a.\"<&>'\r\n\t" + every;
    Host::FormFields form;
    const std::vector<std::pair<std::string, Host::FieldTexts>> fields
        = {{name, {every}}, {"a.b", {" ", "\xF0\x9F\x98\x80"}}, {"c", {""}}};
    for (const auto& [path, value] : fields) {
        form.fields.emplace_back();
        form.fields.back().path = path;
        form.fields.back().kind = Host::FieldKind::ListBox;
        form.fields.back().value = value;
    }
    const auto values = readXfdf(*writeXfdf(form));
    ASSERT_TRUE(values) << values.refusal().message;
    const Host::FieldValues expected = {{name, every}, {"a.b", Host::FieldTexts{" ", "\xF0\x9F\x98\x80"}}, {"c", ""}};
    EXPECT_EQ(*values, expected);
}

#endif
