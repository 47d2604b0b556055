#include "ScheduleWords.h"

#include <gtest/gtest.h>

#include "DatumReader.h"

using namespace workbench;

namespace {

// The values of the octets that the hexadecimal digits give.
std::vector<standard::Datum> Values(std::string const& hex) {
    standard::Octets octets;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        octets.push_back(
            static_cast<char>(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16))));
    }
    return standard::DatumsOf(octets).value();
}

// A week whose Monday has these entries.
ScheduleWords Monday(std::string const& entries) {
    return WeeklyWords(Values("0E" + entries + "0F0E0F0E0F0E0F0E0F0E0F0E0F"));
}

constexpr char Noon[] = "B40C000000";

}  // namespace

TEST(ScheduleWords, AWeekHasSevenDays) {
    EXPECT_EQ(Monday("").text, ";;;;;;;");
    EXPECT_EQ(Monday("").lost, "");
    EXPECT_EQ(WeeklyWords({}).text, "?");
    EXPECT_EQ(WeeklyWords(Values("0E0F")).text, "?");
    EXPECT_EQ(WeeklyWords(Values("2101")).text, "?");
}

TEST(ScheduleWords, EveryDatatypeHasItsText) {
    auto const entry = [](std::string const& value) {
        std::string const text = Monday(Noon + value).text;
        return text.substr(9, text.size() - 9 - 7);
    };
    EXPECT_EQ(entry("11"), "1,1,1");
    EXPECT_EQ(entry("10"), "1,1,0");
    EXPECT_EQ(entry("212D"), "2,3,45d");
    EXPECT_EQ(entry("3107"), "3,1,7");
    EXPECT_EQ(entry("4441AC0000"), "4,9,21.500000");
    EXPECT_EQ(entry("55083FF4000000000000"), "5,8,1.250000");
    EXPECT_EQ(entry("620AFF"), "6,4,0aff");
    EXPECT_EQ(entry("75060068656C6C6F"), "7,5,hello");
    EXPECT_EQ(entry("8204A0"), "8,4,1010");
    EXPECT_EQ(entry("9102"), "9,1,2");
    EXPECT_EQ(entry("A47C030F05"), "10,9,515032024");
    EXPECT_EQ(entry("B4061E0000"), "11,8,06300000");
    EXPECT_EQ(entry("C4000004D2"), "12,0,1234");
}

TEST(ScheduleWords, WhatTheTextCannotHoldIsNamed) {
    EXPECT_EQ(Monday(std::string(Noon) + "00").lost, "entries with Null are left out");
    EXPECT_EQ(Monday(std::string(Noon) + "00").text, ";;;;;;;");
    EXPECT_EQ(Monday(std::string(Noon) + "31FD").lost, "the sign of a Signed is lost");
    EXPECT_EQ(Monday(std::string(Noon) + "31FD").text, "12000000,3,3,253;;;;;;;");
    EXPECT_EQ(Monday(std::string(Noon) + "25050100000001").lost, "the bits above 32 of a number are lost");
    EXPECT_EQ(Monday(std::string(Noon) + "A4FF0C19FF").lost, "unspecified parts of a date become digits");
    EXPECT_EQ(Monday("B40CFFFFFF11").lost, "unspecified parts of a time become digits");
    EXPECT_EQ(Monday(std::string(Noon) + "55083E45798EE2308C3A").lost, "decimals after the sixth are lost");
}

TEST(ScheduleWords, AnExceptionHasEveryFormOfPeriod) {
    std::string const entries = "2E" + std::string(Noon) + "112F3910";
    EXPECT_EQ(ExceptionWords({}).text, "");
    EXPECT_EQ(ExceptionWords(Values("0E0C7C030F050F" + entries)).text, "0,515032024,16,12000000,1,1,1;");
    EXPECT_EQ(ExceptionWords(Values("0E1EA47C030F05A47C0310061F0F" + entries)).text,
              "1,515032024,616032024,16,12000000,1,1,1;");
    EXPECT_EQ(ExceptionWords(Values("0E2B0001020F" + entries)).text, "2,**12,16,12000000,1,1,1;");
    EXPECT_EQ(ExceptionWords(Values("1C01800007" + entries)).text, "3,7,16,12000000,1,1,1;");
    EXPECT_EQ(ExceptionWords(Values("0E0F" + entries)).text, "?");
    EXPECT_EQ(ExceptionWords(Values("3910")).text, "?");
}

TEST(ScheduleWords, AnEventWithoutEntriesTakesTheSemicolonBeforeIt) {
    std::string const full = "1C018000072E" + std::string(Noon) + "112F3910";
    ScheduleWords const words = ExceptionWords(Values(full + "1C018000072E2F3910"));
    EXPECT_EQ(words.text, "3,7,16,12000000,1,1,1");
    EXPECT_EQ(words.lost, "an event without entries is left out");
}
