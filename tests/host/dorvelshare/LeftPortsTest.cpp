#include "LeftPorts.h"

#include <gtest/gtest.h>

using dorvel::LeftPorts;

namespace {

constexpr long long Second = 10'000'000;

}  // namespace

TEST(LeftPorts, AreKnownFor10Seconds) {
    LeftPorts ports;
    EXPECT_FALSE(ports.Has(47809, 0));
    ports.Add(47809, 5 * Second);
    ports.Add(47810, 9 * Second);
    EXPECT_TRUE(ports.Has(47809, 15 * Second - 1));
    EXPECT_FALSE(ports.Has(47809, 15 * Second));
    EXPECT_TRUE(ports.Has(47810, 15 * Second));
    EXPECT_FALSE(ports.Has(47811, 15 * Second));
}

TEST(LeftPorts, ThatAreLeftAgainAreKnownFromThenOn) {
    LeftPorts ports;
    ports.Add(47809, 0);
    ports.Add(47809, 9 * Second);
    EXPECT_TRUE(ports.Has(47809, 18 * Second));
}

TEST(LeftPorts, AreForgottenFromTheOldestOnWhenThereAreTooMany) {
    LeftPorts ports;
    for (std::size_t i = 0; i <= LeftPorts::Capacity; ++i) {
        ports.Add(static_cast<unsigned short>(10'000 + i), 0);
    }
    EXPECT_FALSE(ports.Has(10'000, 1));
    EXPECT_TRUE(ports.Has(10'001, 1));
    EXPECT_TRUE(ports.Has(static_cast<unsigned short>(10'000 + LeftPorts::Capacity), 1));
    ports.Clear();
    EXPECT_FALSE(ports.Has(10'001, 1));
}
