#include "NumberText.h"

#include <gtest/gtest.h>

#include <random>

using namespace tools;

namespace {

TEST(NumberText, AreAsShortAsTheyCanBe) {
    EXPECT_EQ(NumberText(21.5f), "21.5");
    EXPECT_EQ(NumberText(0.1f), "0.1");
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(100.0), "100");
    EXPECT_EQ(NumberText(-0.0), "-0");
    EXPECT_EQ(NumberText(1e30), "1e+30");
    EXPECT_EQ(NumberText(std::stof("nan")), "nan");
    EXPECT_EQ(NumberText(-std::stod("inf")), "-inf");
}

TEST(NumberText, ReadBackAsTheSame) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 10000; ++i) {
        double const value = static_cast<double>(random()) * 1e-7 - 1e11;
        EXPECT_EQ(std::stod(NumberText(value)), value);
        EXPECT_EQ(std::stof(NumberText(static_cast<float>(value))), static_cast<float>(value));
    }
}

}  // namespace
