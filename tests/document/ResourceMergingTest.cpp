#include <tests/support/Pages.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

Ref<PDF::Document> targetWith(const std::string& resources)
{
    const std::string page = "<< /Resources " + resources + " >>";
    return open(PdfText().pages("3 0 R").object(3, page).object(4, "<< /T 1 >>").object(5, "7"));
}

Ref<PDF::Document> foreignWith(const std::string& resources)
{
    const std::string page = "<< /Contents 6 0 R /Resources " + resources + " >>";
    return open(PdfText().pages("3 0 R").object(3, page).object(4, "<< /N 9 >>").object(5, "8").stream(6, "")
            .object(7, "[ /Text ]"));
}

} // namespace

TEST(ResourceMerging, addsWhatIsFreeAndKeepsWhatIsThere)
{
    const char* const grown = "<< /P [ /PDF /ImageB ] >>";
    // Rule, resources of the target and of the foreign page, and those of the target afterwards.
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"an indirect category arrives as a direct one", "<< >>", "<< /Font 4 0 R >>", "<< /Font << /N 9 >> >>"},
        {"an indirect value becomes a new object", "<< >>", "<< /Font << /F 4 0 R >> >>", "<< /Font << /F 6 0 R >> >>"},
        {"a name may come in two categories", "<< >>", "<< /A << /N 1 >> /B << /N 2 >> >>",
            "<< /A << /N 1 >> /B << /N 2 >> >>"},
        {"an equal value is reused", "<< /Font << /F [ 1 2 ] >> >>", "<< /Font << /F [ 1 2 ] /G 3 >> >>",
            "<< /Font << /F [ 1 2 ] /G 3 >> >>"},
        {"references are equal by their numbers", "<< /Font << /F 4 0 R >> >>", "<< /Font << /F 4 0 R >> >>",
            "<< /Font << /F 4 0 R >> >>"},
        {"of arrays the foreign one grows", "<< /P [ /PDF /Text ] >>", grown, "<< /P [ /PDF /Text ] >>"},
        {"so does one behind a reference", "<< /P [ /PDF ] >>", "<< /P 7 0 R >>", "<< /P [ /PDF ] >>"},
        {"a new array category arrives empty", "<< >>", "<< /P [ /PDF ] >>", "<< /P [ ] >>"},
    };
    for (const auto& [rule, own, added, result] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document = targetWith(own);
        const Ref<PDF::Document> foreign = foreignWith(added);
        EXPECT_TRUE(addBeneath(document, foreign));
        EXPECT_EQ(pageEntry(document, 0, "Resources"), result);
        EXPECT_EQ(pageEntry(foreign, 0, "Resources"), added == grown ? "<< /P [ /PDF /ImageB /Text ] >>" : added);
    }
}

TEST(ResourceMerging, changesASharedDictionaryInPlaceAndTellsWhatItReuses)
{
    const Ref<PDF::Document> document = targetWith("<< /Font 4 0 R >>");
    const LogCapture log;
    EXPECT_TRUE(addBeneath(document, foreignWith("<< /Font << /N 2 /T 1 >> >>")));
    EXPECT_TRUE(log.has("Resource is equal, reusing: T"));
    EXPECT_EQ(pageEntry(document, 0, "Resources"), "<< /Font 4 0 R >>");
    EXPECT_EQ(objectText(document, 4), "<< /N 2 /T 1 >>");
}

TEST(ResourceMerging, stopsAtTheFirstFaultAndKeepsWhatWasDone)
{
    // Rule, both resources, line, and those of the target afterwards; empty when they are as before.
    const std::tuple<const char*, const char*, const char*, const char*, std::string> cases[] = {
        {"a name is taken in all categories", "<< /XObject << /N 1 >> >>", "<< /Font << /N 1 >> >>",
            "A resource already exists with name N", "<< /Font << >> /XObject << /N 1 >> >>"},
        {"other references are other values", "<< /Font << /F 5 0 R >> >>", "<< /Font << /A 1 /F 4 0 R >> >>",
            "A resource already exists with name F", "<< /Font << /A 1 /F 5 0 R >> >>"},
        {"a value that can't be cloned", "<< >>", "<< /Font << /A 4 0 R /F 9 0 R >> >>",
            "Failed to clone value of F of resource to add Font", "<< /Font << /A 6 0 R >> >>"},
        {"categories of the target are looked at first", "<< /Odd null >>", "<< /Font << /F 1 >> >>",
            "Invalid type of resource entry Odd: 9h (9)", ""},
        {"behind a reference too", "<< /Font 5 0 R >>", "<< >>", "Object 5 (0) has invalid type 3h (3)", ""},
        {"which must lead somewhere", "<< /Font 9 0 R >>", "<< >>", "Failed to resolve object reference 9 (0)", ""},
        {"the same for those to add", "<< >>", "<< /Font << /F 1 >> /Odd 3 >>", "Type not valid for Resources: 3h (3)",
            "<< /Font << /F 1 >> >>"},
        {"behind a reference", "<< >>", "<< /Font 5 0 R >>",
            "Object 5 (0) of resources to add has invalid type for resource: 3h (3)", ""},
        {"a dictionary is no array", "<< /P << >> >>", "<< /P [ ] >>",
            "Original resource expects an Array, but resource to add provides a Dictionary for P", ""},
        {"an array no dictionary", "<< /P [ ] >>", "<< /P << >> >>",
            "Original resource expects a Dictionary, but resource to add provides an Array for P", ""},
        {"elements are cloned as if they were foreign", "<< /P [ /PDF 9 0 R ] >>", "<< /P [ /PDF ] >>",
            "Failed to clone array value 1h (1) of resource to add: P", ""},
    };
    for (const auto& [rule, target, foreign, line, result] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document = targetWith(target);
        LogCapture log;
        EXPECT_EQ(codeOf(addBeneath(document, foreignWith(foreign))), ErrNoResource);
        ASSERT_GE(log.lines.size(), 2u);
        EXPECT_EQ(Lines(log.lines.end() - 2, log.lines.end()),
            (Lines{line, "Failed to add resources of foreign page 0h (0) to page 3 (0)"}));
        EXPECT_EQ(pageEntry(document, 0, "Resources"), result.empty() ? target : result);
        EXPECT_EQ(pageEntry(document, 0, "Contents"), "none");
    }
}
