#include <host/pages/ContentBalance.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// "broken", or the number of open states.
std::string balance(const std::string& content)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(content.data());
    const Host::ContentBalance found = Host::balanceOf({bytes, content.size()});
    return found.isBroken ? "broken" : std::to_string(found.openStates);
}

} // namespace

TEST(ContentBalance, tellsWhatContentLeavesOpen)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "0"}, {"q Q", "0"}, {"q q Q", "1"}, {"q\nq", "2"}, {"Q", "broken"}, {"q Q Q q", "broken"},
        {"BT ET", "0"}, {"BT q ET", "1"}, {"BT", "broken"}, {"ET", "broken"}, {"BT BT ET", "broken"},
        {"/A BMC EMC", "0"}, {"/A << /B (>>) >> BDC EMC", "0"}, {"/A BMC", "broken"}, {"EMC", "broken"},
        {"0 0 m 9 9 l S", "0"}, {"0 0 9 9 re", "broken"}, {"0 0 9 9 re W n", "0"},
        {"% Q\nq", "1"}, {"(Q \\) Q (Q) ) Tj q", "1"}, {"(Q", "broken"}, {"<51> Tj", "0"}, {"<51", "broken"},
        {"[(Q) 1 (Q)] TJ", "0"}, {"[ (a)", "broken"}, {"/Q gs", "0"}, {"q/Q gs", "1"},
        {"BI /W 1 ID \x01Q EI q", "1"}, {"BI ID \x7F EI \x01\x02 EI\n", "0"}, {"BI /W 1 ID abc", "broken"},
        {"1 0 0 1 0 0 cm q", "1"}, {"QQ qq", "0"}, {"true null -.5 +1 q", "1"},
    };
    for (const auto& [content, expected] : cases)
        EXPECT_EQ(balance(content), expected) << content;
}
