#include <host/losses/TableChain.h>

#include <tests/support/FlateData.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Host;
using namespace Tests;

namespace {

// The rows that are found, as "number:offset", with a letter for the place of those in use.
std::string rowsOf(const std::string& tables, const std::string& start, bool isWhole)
{
    const TestFolder folder;
    SourceText text(*FileStripe::open(folder.put("file", tables + "startxref\n" + start + "\n%%EOF\n\n\r\r")));
    const TableChain chain(text);
    EXPECT_EQ(chain.isWhole(), isWhole) << tables;
    std::string rows;
    for (const auto& [id, row] : chain.rows())
        rows += std::to_string(id) + ":" + std::to_string(row.offset) + (row.inUse ? "FSE"[int(row.place)] : '-') + " ";
    return rows;
}

} // namespace

TEST(TableChain, readsAllSubsectionsAndAllTables)
{
    const std::string old = "xref\n0 3\n0 65535 f \n11 0 n \n22 00000 n\ntrailer<</Size 3>>\n";
    const std::string place = std::to_string(old.size());
    const std::tuple<const char*, std::string, std::string, bool, const char*> cases[] = {
        {"one table", old, "0", true, "0:0- 1:11F 2:22F "},
        {"a newer one comes first", old + "xref\n1 1\n33 0 n\n5 2\n55 0 n\n66 1 f\ntrailer\n<</Prev 0>>", place, true,
            "0:0- 1:33F 2:22E 5:55S 6:66- "},
        {"a comment, and zeros in front", "xref % x\n01 1 000000000000000000000000007 00 n trailer <<>>", "0", true,
            "1:7F "},
        {"a number appears twice", "xref 1 2 1 0 n 2 0 n 1 1 3 0 n trailer<<>>", "0", true, "1:1F 2:2F "},
        {"tables that lead to themselves", "xref 1 1 1 0 n trailer<</Prev 0>>", "0", true, "1:1F "},
        {"no table at all", "xrfe 1 1 1 0 n trailer<<>>", "0", false, ""},
        {"no place", old, "", false, ""},
        {"a place after the end", old, "99999", false, ""},
        {"a row that is none", "xref 1 2 1 0 n 2 n 0 trailer<<>>", "0", false, "1:1F "},
        {"no trailer", "xref 1 1 1 0 n\n", "0", false, "1:1F "},
        {"a previous table that is none", "xref 1 1 1 0 n trailer<</Prev 5>>", "0", false, "1:1F "},
        {"a previous table by a reference", "xref 1 1 1 0 n trailer<</Prev 5 0 R>>", "0", false, "1:1F "},
        {"a table in a stream", "xref 1 1 1 0 n trailer<</XRefStm 5>>", "0", false, "1:1F "},
        {"more rows than there can be", "xref 1 99999999999 1 0 n trailer<<>>", "0", false, "1:1F "},
    };
    for (const auto& [rule, tables, start, isWhole, rows] : cases)
        EXPECT_EQ(rowsOf(tables, start, isWhole), rows) << rule;
}

TEST(SourceText, holdsWhatWasLookedAtFromAPlaceOnwards)
{
    const std::string bytes = incompressible(200'000);
    const TestFolder folder;
    SourceText text(*FileStripe::open(folder.put("file", bytes)));
    for (const std::size_t start : {0u, 100u, 65'535u, 199'999u}) {
        text.moveTo(start);
        EXPECT_TRUE(text.isAt(start, bytes.substr(start)));
        EXPECT_EQ(text.at(bytes.size()), SourceText::end);
        EXPECT_EQ(text.slice(start, bytes.size(), 50), bytes.substr(start, 50));
    }
    text.moveTo(70'000);
    EXPECT_FALSE(text.isAt(70'010, bytes.substr(70'011, 5)));
    EXPECT_EQ(text.at(69'999), SourceText::end);
    EXPECT_EQ(text.slice(69'999, 70'010, 99), "");
}
