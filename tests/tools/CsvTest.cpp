#include <gtest/gtest.h>

#include <tools/ValueRows.h>

namespace {

using namespace Tools;

// Rows with "|" after each cell and "/" after each row, and why a row was refused.
std::string read(std::string_view text, char separator = ',')
{
    CsvReader reader(sourceOf(text), separator);
    std::string out;
    for (;;) {
        const auto row = reader.read();
        if (row && row->empty())
            return out;
        if (!row)
            out += row.refusal().message;
        for (const std::string& cell : row ? *row : CsvRow())
            out += cell + "|";
        out += "/";
    }
}

} // namespace

TEST(Csv, rowsAreReadByTheStandard)
{
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"both line ends, and none at the last row", "a,b\r\nc,d\ne,f", "a|b|/c|d|/e|f|/"},
        {"empty cells", ",\n,x,\n\"\"\n", "||/|x||/|/"},
        {"quotes", "\"a,b\",\"c\"\"d\",\"e\r\nf\"\nx,y,z", "a,b|c\"d|e\r\nf|/x|y|z|/"},
        {"a mark before the first cell alone", "\xEF\xBB\xBF" "a,\xEF\xBB\xBF" "b", "a|\xEF\xBB\xBF" "b|/"},
        {"empty lines", "\n\r\na\n\nb\n\n", "a|/b|/"},
        {"any other character", std::string("a\0\x01;,\xF0\x9F\x98\x80", 9), nullptr},
        {"nothing", "", ""},
    };
    for (const auto& [rule, text, rows] : cases)
        EXPECT_EQ(read(text), rows ? rows : std::string("a\0\x01;|\xF0\x9F\x98\x80|/", 11)) << rule;
    EXPECT_EQ(read("a,b;c\td", ';'), "a,b|c\td|/");
    EXPECT_EQ(read("a,b;c\td", '\t'), "a,b;c|d|/");
}

TEST(Csv, brokenRowsAreRefusedAndTheOthersRead)
{
    const std::pair<std::string, const char*> cases[] = {
        {"a\nb\"c,d\ne", "a|/line 2, column 2: a quote in a cell that doesn't begin with one/e|/"},
        {"\"\xC3\xA4\"x\ne", "line 1, column 4: text after the closing quote of a cell/e|/"},
        {"\"a\nb\" \ne", "line 2, column 3: text after the closing quote of a cell/e|/"},
        {"a\rb\ne", "line 1, column 3: a carriage return without a line feed/e|/"},
        {"a,\xFF,c\ne", "line 1, column 4: the text before this is not UTF-8/e|/"},
        {"e\n\"a\n\n", "e|/line 4, column 1: the file ends in a cell whose quote isn't closed/"},
        {"\xEF\xBB" "a\ne", "line 1, column 1: the text before this is not UTF-8/e|/"},
        {std::string("\xFF\xFE" "a\0\n\0", 6), "line 1, column 5: the text before this is not UTF-8/"},
        {std::string(17 << 20, 'x') + "\ne", "line 1, column 16777218: the row is too long/e|/"},
        {"\"" + std::string(17 << 20, '\n') + "\"\ne",
            "line 16777217, column 1: the row is too long, and may have a quote that isn't closed/"},
    };
    for (const auto& [text, rows] : cases)
        EXPECT_TRUE(read(text).starts_with(rows)) << read(text).substr(0, 200) << "\n" << rows;
}

TEST(Csv, aCellIsReadAsItWasWritten)
{
    std::string every;
    for (int c = 0; c < 128; ++c)
        every += static_cast<char>(c);
    for (const std::string& text : std::vector<std::string>{every, "\xEF\xBB\xBF", " ", "\"", "a;b"})
        for (const char separator : {',', ';', '\t'}) {
            const std::string file = csvCell(text, separator) + separator + csvCell(text, separator) + "\r\n";
            CsvReader reader(sourceOf(file), separator);
            EXPECT_EQ(*reader.read(), CsvRow({text, text}));
        }
}

TEST(ValueRows, cellsBelongToTheNamesAboveThem)
{
    auto rows = ValueRows::create(sourceOf("a,list,list,b\nx,one,,\n1,2,3\n,one,two,\n"), ',');
    ASSERT_TRUE(rows);
    const auto first = rows->next();
    EXPECT_EQ(rows->valuesOf(*first), (Host::FieldValues{{"a", "x"}, {"list", "one"}}));
    EXPECT_EQ(rows->next().refusal().message, "line 3: 3 cells for 4 names");
    const auto third = rows->next();
    EXPECT_EQ(rows->valuesOf(*third), (Host::FieldValues{{"list", Host::FieldTexts{"one", "two"}}}));
    EXPECT_EQ(rows->rowLine(), 4u);

    EXPECT_EQ(ValueRows::create(sourceOf("\n"), ',').refusal().message, "has no row of names");
    EXPECT_EQ(ValueRows::create(sourceOf("\na,,b\n"), ',').refusal().message, "line 2: cell 2 has no name");
}
