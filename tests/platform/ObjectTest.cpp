#include <platform/Object.h>
#include <platform/String.h>
#include <platform/Windows_1252.h>

#include <gtest/gtest.h>

namespace {

class Probe final : public Object {
public:
    explicit Probe(int& alive) : _alive(alive) { ++_alive; }
    ~Probe() noexcept override { --_alive; }

private:
    int& _alive;
};

} // namespace

TEST(Object, livesAsLongAsSomebodyHoldsIt)
{
    int alive = 0;
    Ref<Probe> first = make<Probe>(alive);
    Ref<Object> second = first;
    const WeakRef<Object> weak(second.get());
    first = nullptr;
    EXPECT_TRUE(alive == 1 && weak.lock() == second);
    second = std::move(first);
    EXPECT_TRUE(alive == 0 && !weak.lock());
}

TEST(Windows1252, everyByteSurvivesAndOtherCharactersAreMarked)
{
    const Libraries::Strings::Encodings::ANSI::Windows_1252 encoding(true);
    for (unsigned byte = 0; byte < 256; ++byte)
        EXPECT_EQ(encoding.byte(encoding.codePoint(std::uint8_t(byte))), byte);
    EXPECT_EQ(encoding.codePoint(0x81), 0x81u) << "undefined bytes stand for their own number";
    EXPECT_EQ(encoding.byte(0x80), 0x80u) << "below 256 a character without a byte gives its low 8 bits";
    EXPECT_EQ(encoding.byte(0x141), '?');
    EXPECT_FALSE(encoding.hasByte(0x80) || encoding.hasByte(0x141));
    EXPECT_TRUE(encoding.hasByte(0x81) && encoding.hasByte(0x20AC));
}
