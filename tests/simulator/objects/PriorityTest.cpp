#include "PriorityArray.h"

#include <array>
#include <optional>
#include <random>

#include "WriteFixture.h"

// Commands of several priorities, as of an operator (8) and of a programme (16).
class Priority : public test::WriteFixture {
protected:
    static constexpr char const* Null = "00";

    struct Row {
        char const* type;
        char const* relinquishDefault;  // as in a device file
        char const* fallback;
        char const* first;
        char const* second;
    };
};

namespace {

constexpr char const* Empty = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";

}  // namespace

TEST_F(Priority, EightOverSixteen) {
    MakeWith("analog_output{instance = 1, relinquish_default = 5}");
    EXPECT_EQ(Read("analog_output", 85), "44 40 A0 00 00") << "nobody commands";
    EXPECT_EQ(Write("analog_output", 85, "44 41 20 00 00"), Ack) << "no priority means 16";
    EXPECT_EQ(Read("analog_output", 85), "44 41 20 00 00");
    EXPECT_EQ(Write("analog_output", 85, "44 41 A0 00 00", 8), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 41 A0 00 00");
    EXPECT_EQ(Write("analog_output", 85, "44 41 F0 00 00", 16), Ack) << "taken, but below 8";
    EXPECT_EQ(Read("analog_output", 85), "44 41 A0 00 00");
    EXPECT_EQ(Read("analog_output", 87),
              "00 00 00 00 00 00 00 44 41 A0 00 00 00 00 00 00 00 00 00 44 41 F0 00 00");
    EXPECT_EQ(Write("analog_output", 85, Null, 8), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 41 F0 00 00");
    EXPECT_EQ(Write("analog_output", 85, Null), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 40 A0 00 00");
    EXPECT_EQ(Read("analog_output", 87), Empty);
}

TEST_F(Priority, RelinquishedTheOtherWayRound) {
    MakeWith("analog_output{instance = 1, relinquish_default = 5}");
    Write("analog_output", 85, "44 41 20 00 00", 16);
    Write("analog_output", 85, "44 41 A0 00 00", 8);
    EXPECT_EQ(Write("analog_output", 85, Null, 16), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 41 A0 00 00");
    EXPECT_EQ(Write("analog_output", 85, Null, 8), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 40 A0 00 00");
    EXPECT_EQ(Write("analog_output", 85, Null, 8), Ack) << "nothing there any more";
}

TEST_F(Priority, ElementsOfTheArray) {
    MakeWith("binary_output{instance = 1}");
    Write("binary_output", 85, "91 01", 1);
    EXPECT_EQ(Read("binary_output", 87, 0), "21 10");
    EXPECT_EQ(Read("binary_output", 87, 1), "91 01");
    EXPECT_EQ(Read("binary_output", 87, 16), "00");
    EXPECT_EQ(Read("binary_output", 87, 17), "50 01 0C 91 02 91 2A");
}

TEST_F(Priority, ACommandAnsweredByAnErrorChangesNothing) {
    MakeWith("multi_state_output{instance = 1, number_of_states = 3, present_value = 2}");
    EXPECT_EQ(Write("multi_state_output", 85, "21 04", 8), OutOfRange);
    EXPECT_EQ(Write("multi_state_output", 85, "91 01", 8), InvalidDataType);
    EXPECT_EQ(Read("multi_state_output", 85), "21 02");
    EXPECT_EQ(Read("multi_state_output", 87, 8), "00");
}

TEST_F(Priority, TheRelinquishDefaultCanBeWritten) {
    MakeWith("binary_output{instance = 1}");
    EXPECT_EQ(Write("binary_output", 104, "91 02"), OutOfRange);
    EXPECT_EQ(Write("binary_output", 104, "91 01"), Ack);
    EXPECT_EQ(Read("binary_output", 104), "91 01");
    EXPECT_EQ(Read("binary_output", 85), "91 01");
}

TEST_F(Priority, AnObjectWithoutPrioritiesIgnoresThem) {
    MakeWith("analog_value{instance = 1}");
    EXPECT_EQ(Write("analog_value", 85, "44 41 A0 00 00", 8), Ack);
    EXPECT_EQ(Write("analog_value", 85, "44 41 20 00 00", 16), Ack);
    EXPECT_EQ(Read("analog_value", 85), "44 41 20 00 00") << "the last one counts";
    EXPECT_EQ(Write("analog_value", 85, Null, 8), InvalidDataType) << "nothing to relinquish";
    EXPECT_EQ(Read("analog_value", 87), "50 01 0C 91 02 91 20");
}

TEST_F(Priority, AMovingValueComesBackWhenItsPriorityIsRelinquished) {
    MakeWith("analog_output{instance = 1, present_value = ramp{from = 0, to = 10, period = 10}}");
    EXPECT_EQ(Write("analog_output", 85, "44 41 A0 00 00", 16), Ack);
    Wait(std::chrono::seconds(2));
    EXPECT_EQ(Read("analog_output", 85), "44 41 A0 00 00");
    EXPECT_EQ(Write("analog_output", 85, Null, 16), Ack);
    EXPECT_EQ(Read("analog_output", 85), "44 40 00 00 00");
    EXPECT_EQ(Read("analog_output", 87, 16), "44 40 00 00 00");
    Wait(std::chrono::seconds(1));
    EXPECT_EQ(Read("analog_output", 85), "44 40 40 00 00");
}

TEST_F(Priority, AFixedValueGoesBackToTheRelinquishDefault) {
    MakeWith("analog_value{instance = 1, present_value = 20.5, relinquish_default = 20}");
    EXPECT_EQ(Read("analog_value", 85), "44 41 A4 00 00");
    EXPECT_EQ(Write("analog_value", 85, Null, 16), Ack);
    EXPECT_EQ(Read("analog_value", 85), "44 41 A0 00 00");
}

TEST_F(Priority, EveryCommandableType) {
    constexpr Row rows[] = {
        {"analog_output", "5", "44 40 A0 00 00", "44 41 20 00 00", "44 41 A0 00 00"},
        {"analog_value", "5", "44 40 A0 00 00", "44 41 20 00 00", "44 41 A0 00 00"},
        {"binary_output", "'active'", "91 01", "91 00", "91 01"},
        {"binary_value", "'inactive'", "91 00", "91 01", "91 00"},
        {"multi_state_output", "3", "21 03", "21 01", "21 02"},
        {"multi_state_value", "3", "21 03", "21 01", "21 02"},
        {"lighting_output", "5", "44 40 A0 00 00", "44 41 20 00 00", "44 41 A0 00 00"},
        {"integer_value", "-5", "31 FB", "31 07", "32 01 00"},
        {"large_analog_value", "0", "55 08 00 00 00 00 00 00 00 00", "55 08 3F F0 00 00 00 00 00 00",
         "55 08 40 00 00 00 00 00 00 00"},
        {"positive_integer_value", "5", "21 05", "21 07", "22 01 00"},
        {"bit_string_value", "'101'", "82 05 A0", "82 05 40", "82 05 E0"},
        {"octet_string_value", "'0A'", "61 0A", "61 0B", "60"},
        {"date_value", "'2024-03-15'", "A4 7C 03 0F 05", "A4 7C 03 10 06", "A4 FF FF FF FF"},
        {"datetime_value", "'*'", "A4 FF FF FF FF B4 FF FF FF FF", "A4 7C 03 10 06 B4 08 00 00 00",
         "A4 7C 03 11 07 B4 08 00 00 00"},
        {"time_value", "'08:00'", "B4 08 00 00 00", "B4 09 00 00 00", "B4 0A 00 00 00"},
    };
    for (Row const& row : rows) {
        MakeWith(std::string(row.type) + "{instance = 1, relinquish_default = " + row.relinquishDefault +
                 "}");
        EXPECT_EQ(Read(row.type, 85), row.fallback) << row.type;
        EXPECT_EQ(Write(row.type, 85, row.first), Ack) << row.type;
        EXPECT_EQ(Write(row.type, 85, row.second, 8), Ack) << row.type;
        EXPECT_EQ(Read(row.type, 85), row.second) << row.type;
        bool const isConstructed = row.type == std::string("datetime_value");
        EXPECT_EQ(Read(row.type, 87, 8),
                  isConstructed ? std::string("1E ") + row.second + " 1F" : std::string(row.second))
            << row.type;
        EXPECT_EQ(Write(row.type, 85, Null, 8), Ack) << row.type;
        EXPECT_EQ(Read(row.type, 85), row.first) << row.type;
        EXPECT_EQ(Write(row.type, 85, Null, 16), Ack) << row.type;
        EXPECT_EQ(Read(row.type, 85), row.fallback) << row.type;
        EXPECT_EQ(Read(row.type, 87), Empty) << row.type;
    }
}

// Compared with a simple model: 16 positions, of which the first one with a value counts.
TEST_F(Priority, CommandsInAnyOrder) {
    MakeWith("positive_integer_value{instance = 1, relinquish_default = 200}");
    std::mt19937 random(4711);
    std::array<std::optional<unsigned>, 16> places;
    for (int i = 0; i < 2000; ++i) {
        unsigned const priority = random() % 16 + 1;
        unsigned const value = random() % 100;
        bool const isRelinquished = random() % 3 == 0;
        places[priority - 1] = isRelinquished ? std::nullopt : std::optional<unsigned>(value);
        std::string const octets = isRelinquished ? Null : "21 " + test::ToHex({static_cast<char>(value)});
        ASSERT_EQ(Write("positive_integer_value", 85, octets, priority), Ack);
        unsigned expected = 200;
        for (auto const& place : places) {
            if (place) {
                expected = *place;
                break;
            }
        }
        ASSERT_EQ(Read("positive_integer_value", 85), "21 " + test::ToHex({static_cast<char>(expected)}));
    }
}
