#include "Interfaces.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace standard;

namespace {

constexpr std::uint32_t Loopback = 0x7F000001;

}  // namespace

TEST(Interfaces, TheLoopbackInterfaceHasABroadcastAddress) {
    auto const all = Interfaces();
    auto const found =
        std::find_if(all.begin(), all.end(), [](Interface const& one) { return one.address == Loopback; });
    ASSERT_NE(found, all.end());
    EXPECT_TRUE(found->isLoopback);
    EXPECT_FALSE(found->name.empty());
    EXPECT_EQ(found->broadcast, 0x7FFFFFFF);
}

TEST(Interfaces, OneIsFoundByRouting) {
    auto const found = InterfaceTowards(Loopback + 5);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isLoopback);
    auto const byBroadcast = InterfaceTowards(0x7FFFFFFF);
    ASSERT_TRUE(byBroadcast);
    EXPECT_EQ(byBroadcast->address, found->address);
}

TEST(Interfaces, TheBroadcastAddressHasTheBitsOfTheHosts) {
    EXPECT_EQ(BroadcastOf(0xC0A80105, 0xFFFFFF00), 0xC0A801FF);
    EXPECT_EQ(BroadcastOf(0x0A010203, 0xFF000000), 0x0AFFFFFF);
    EXPECT_EQ(BroadcastOf(0xC0A80105, 0xFFFFFFFC), 0xC0A80107);
    EXPECT_FALSE(BroadcastOf(0xC0A80105, 0xFFFFFFFE));
    EXPECT_FALSE(BroadcastOf(0xC0A80105, 0xFFFFFFFF));
}
