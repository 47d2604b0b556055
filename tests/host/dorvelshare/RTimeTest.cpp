#include "dorvelshare/RTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <random>
#include <string>

namespace {

RTime At(unsigned long long fileTime) {
    FileTime const halves = ULLtoFT(fileTime);
    RTime time{};
    EXPECT_EQ(FileTimeToRTime(&halves, &time), 0) << fileTime;
    return time;
}

std::string Itoa(int value, int radix) {
    char buffer[34];
    return itoa(value, buffer, radix);
}

}  // namespace

TEST(RTime, FileTimeHasTwoHalves) {
    FileTime const time = ULLtoFT(0x123456789ABCDEF0);
    EXPECT_EQ(time.dwHighDateTime, 0x12345678u);
    EXPECT_EQ(time.dwLowDateTime, 0x9ABCDEF0u);
}

TEST(RTime, ZeroIsTheFirstOfJanuary1601) {
    RTime const time = At(0);
    EXPECT_EQ(time.year, 1601);
    EXPECT_EQ(time.month, 1);
    EXPECT_EQ(time.day, 1);
    EXPECT_EQ(time.hour + time.minute + time.second + time.millisecond, 0);
}

TEST(RTime, ATimeHasAllItsFields) {
    RTime const time = At(133549794965009999);  // 15 March 2024, 12:31:36.5009999
    EXPECT_EQ(time.year, 2024);
    EXPECT_EQ(time.month, 3);
    EXPECT_EQ(time.day, 15);
    EXPECT_EQ(time.hour, 12);
    EXPECT_EQ(time.minute, 31);
    EXPECT_EQ(time.second, 36);
    EXPECT_EQ(time.millisecond, 500);
}

TEST(RTime, AgreesWithTheCLibrary) {
    std::mt19937 random(20240315);
    for (int round = 0; round < 10'000; ++round) {
        auto const seconds = static_cast<std::time_t>(random());
        std::tm expected{};
        ::gmtime_r(&seconds, &expected);
        RTime const time = At((static_cast<unsigned long long>(seconds) + 11'644'473'600) * 10'000'000);
        ASSERT_EQ(time.year, expected.tm_year + 1900);
        ASSERT_EQ(time.month, expected.tm_mon + 1);
        ASSERT_EQ(time.day, expected.tm_mday);
        ASSERT_EQ(time.hour, expected.tm_hour);
        ASSERT_EQ(time.minute, expected.tm_min);
        ASSERT_EQ(time.second, expected.tm_sec);
    }
}

TEST(RTime, EndsWithTheYear30827) {
    constexpr unsigned long long end = 9'223'149'888'000'000'000;  // 1 January 30828
    EXPECT_EQ(At(end - 1).year, 30827);
    FileTime const beyond = ULLtoFT(end);
    RTime time{};
    EXPECT_EQ(FileTimeToRTime(&beyond, &time), -1);
    FileTime const last = ULLtoFT(ULLONG_MAX);
    EXPECT_EQ(FileTimeToRTime(&last, &time), -1);
}

TEST(Itoa, WritesLowerCaseLetters) {
    EXPECT_EQ(Itoa(10, 16), "a");
    EXPECT_EQ(Itoa(15, 16), "f");
    EXPECT_EQ(Itoa(0, 16), "0");
    EXPECT_EQ(Itoa(35, 36), "z");
}

TEST(Itoa, WritesTheLongestNumber) {
    EXPECT_EQ(Itoa(INT_MIN, 2), "-10000000000000000000000000000000");
    EXPECT_EQ(Itoa(INT_MAX, 10), "2147483647");
}

TEST(Itoa, AnotherRadixGivesAnEmptyText) {
    for (int const radix : {-1, 0, 1, 37}) {
        EXPECT_EQ(Itoa(5, radix), "");
    }
}
