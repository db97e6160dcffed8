#include <host/streams/SameData.h>

#include <tests/support/Streams.h>

#include <gtest/gtest.h>

#include <stripes/ByteElements.h>

using namespace Tests;

TEST(SameData, isSameToTheLastElementWhicheverWayItIsRead)
{
    const std::string bytes = incompressible(150000) + "\x80";
    std::string other = bytes;
    other[140000] ^= 1;
    const auto elements = [](const std::string& data) { return make<TestStripe>(data); };
    const auto narrowed = [](const std::string& data) { return make<PDF::ByteElements>(narrow(data)); };
    const Ref<TestStripe> stripe = elements(bytes);
    stripe->seek(7);
    EXPECT_TRUE(Host::haveSameData(stripe, narrowed(bytes)) && Host::haveSameData(narrowed(bytes), narrowed(bytes)));
    EXPECT_EQ(stripe->tell(), 7u);
    for (const std::string& data : {other, bytes + "x", std::string()})
        EXPECT_FALSE(Host::haveSameData(stripe, narrowed(data)) || Host::haveSameData(narrowed(bytes), narrowed(data)));
    EXPECT_TRUE(Host::haveSameData(elements(""), narrowed("")));
    for (const Fault fault : {Fault{.read = 1}, Fault{.seek = 0}})
        EXPECT_FALSE(Host::haveSameData(elements(bytes), make<TestStripe>(bytes, fault)));
    EXPECT_FALSE(Host::haveSameData(stripe, nullptr) || Host::haveSameData(narrow("x"), narrow("x")));
}
