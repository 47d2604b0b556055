#include "StationFixture.h"

class ReadProperty : public test::StationFixture {
protected:
    void SetUp() override {
        MakeWith(R"(
            analog_input{instance = 1, name = "T", present_value = 21.5, units = "degrees-celsius"},
            schedule{instance = 2},
            multi_state_value{instance = 3, state_text = {"off", "on"}, number_of_states = 2},
        )");
    }
};

TEST_F(ReadProperty, PresentValue) {
    EXPECT_EQ(Answer("02 74 01 0C 0C 00 00 00 01 19 55"),
              "30 01 0C 0C 00 00 00 01 19 55 3E 44 41 AC 00 00 3F");
}

TEST_F(ReadProperty, APropertyAbove255) {
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 1A 01 73 29 00"),
              "30 01 0C 0C 00 00 00 01 1A 01 73 29 00 3E 21 0B 3F");
}

TEST_F(ReadProperty, ElementsOfAnArray) {
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 C0 00 03 19 6E 29 00"),
              "30 01 0C 0C 04 C0 00 03 19 6E 29 00 3E 21 02 3F");
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 C0 00 03 19 6E 29 02"),
              "30 01 0C 0C 04 C0 00 03 19 6E 29 02 3E 73 00 6F 6E 3F");
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 C0 00 03 19 6E"),
              "30 01 0C 0C 04 C0 00 03 19 6E 3E 74 00 6F 66 66 73 00 6F 6E 3F");
}

TEST_F(ReadProperty, ADayOfAWeeklySchedule) {
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 40 00 02 19 7B 29 07"),
              "30 01 0C 0C 04 40 00 02 19 7B 29 07 3E 0E 0F 3F");
}

TEST_F(ReadProperty, TheDeviceByItsWildcard) {
    EXPECT_EQ(Answer("00 05 01 0C 0C 02 3F FF FF 19 4B"),
              "30 01 0C 0C 02 00 00 64 19 4B 3E C4 02 00 00 64 3F");
}

TEST_F(ReadProperty, ObjectList) {
    EXPECT_EQ(
        Answer("00 05 01 0C 0C 02 00 00 64 19 4C"),
        "30 01 0C 0C 02 00 00 64 19 4C 3E C4 02 00 00 64 C4 00 00 00 01 C4 04 40 00 02 C4 04 C0 00 03 3F");
}

TEST_F(ReadProperty, Errors) {
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 02 19 55"), "50 01 0C 91 01 91 1F") << "unknown object";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 19 7B"), "50 01 0C 91 02 91 20") << "unknown property";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 19 08"), "50 01 0C 91 02 91 20") << "ALL is not a property";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 19 55 29 00"), "50 01 0C 91 02 91 32") << "no array";
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 C0 00 03 19 6E 29 03"), "50 01 0C 91 02 91 2A") << "index too high";
    EXPECT_EQ(Answer("00 05 01 0C 0C 04 C0 00 03 19 6E 2C FF FF FF FF"), "50 01 0C 91 02 91 2A");
}

TEST_F(ReadProperty, Rejects) {
    EXPECT_EQ(Answer("00 05 01 0C"), "60 01 05") << "no parameters";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01"), "60 01 05") << "no property";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00"), "60 01 04") << "object cut off";
    EXPECT_EQ(Answer("00 05 01 0C C4 00 00 00 01 19 55"), "60 01 04") << "application tag";
    EXPECT_EQ(Answer("00 05 01 0C 1C 00 00 00 01 19 55"), "60 01 04") << "other tag number";
    EXPECT_EQ(Answer("00 05 01 0C 0B 00 00 01 19 55"), "60 01 03") << "object of three octets";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 18"), "60 01 03") << "property of no octet";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 1D 05 00 00 00 00 55"), "60 01 06") << "property of 40 bits";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 19 55 39 00"), "60 01 07") << "another parameter";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 19 55 29 00 00"), "60 01 07") << "one octet more";
    EXPECT_EQ(Answer("00 05 01 0C 0C 00 00 00 01 16 55"), "60 01 04")
        << "application tag with bracket length";
    EXPECT_EQ(Answer("00 05 01 0C 0D FF FF FF FF FF"), "60 01 04") << "a length beyond the request";
}

TEST_F(ReadProperty, OtherServicesAreUnrecognised) {
    EXPECT_EQ(Answer("00 05 01 10 0C 00 00 00 01"), "60 01 09") << "WritePropertyMultiple";
    EXPECT_EQ(Answer("00 05 01 FF"), "60 01 09");
}

TEST_F(ReadProperty, ASegmentedRequestIsAborted) {
    EXPECT_EQ(Answer("0C 05 01 00 01 0C 0C 00 00 00 01 19 55"), "71 01 04");
}

TEST_F(ReadProperty, ARequestLongerThanTheDeviceTakesIsAborted) {
    MakeWith("analog_input{instance = 1}", "max_apdu_length_accepted = 50,");
    std::string const request = "00 05 01 0E 0C 00 00 00 01 1E";
    std::string references;
    for (int i = 0; i < 20; ++i) {
        references += " 09 55";
    }
    EXPECT_EQ(Answer(request + references + " 1F"), "71 01 0B");
}

TEST_F(ReadProperty, AHeadCutOffIsNotAnswered) {
    for (char const* apdu : {"", "00", "00 05", "00 05 01", "08 05 01 00", "08 05 01 00 01"}) {
        EXPECT_EQ(Ask(apdu), test::Texts{}) << apdu;
    }
}

TEST_F(ReadProperty, AnswersOfOthersAreIgnored) {
    for (char const* apdu : {"20 01 0C", "30 01 0C 00", "50 01 0C 91 02 91 20", "60 01 09", "71 01 04",
                             "70 01 04", "40 01 00 01", "80 01", "F0"}) {
        EXPECT_EQ(Ask(apdu), test::Texts{}) << apdu;
    }
}

TEST_F(ReadProperty, CutAnywhereItIsRejected) {
    test::Octets const whole = test::Hex("00 05 01 0C 0C 04 C0 00 03 1A 01 73 2A 00 01");
    for (std::size_t length = 4; length < whole.size(); ++length) {
        std::string const text =
            Answer(test::ToHex(test::Octets(whole.begin(), whole.begin() + static_cast<int>(length))));
        bool const isComplete = length == 12;  // the index is optional
        EXPECT_EQ(text.substr(0, 5), isComplete ? "30 01" : "60 01") << length;
    }
}

TEST_F(ReadProperty, ValuesMoveWithTheClock) {
    MakeWith("analog_input{instance = 1, present_value = ramp{from = 18, to = 22, period = 60}}");
    std::string const request = "00 05 01 0C 0C 00 00 00 01 19 55";
    EXPECT_EQ(Answer(request), "30 01 0C 0C 00 00 00 01 19 55 3E 44 41 90 00 00 3F");
    Wait(std::chrono::seconds(30));
    EXPECT_EQ(Answer(request), "30 01 0C 0C 00 00 00 01 19 55 3E 44 41 A0 00 00 3F");
}

TEST_F(ReadProperty, WhoIsWithinLimits) {
    EXPECT_EQ(Ask("10 08 09 00 19 64").size(), 1u);
    EXPECT_EQ(Ask("10 08 09 64 19 64").size(), 1u);
    EXPECT_EQ(Ask("10 08 09 65 1B 3F FF FF").size(), 0u);
    EXPECT_EQ(Ask("10 08 09 00 19 63").size(), 0u);
    EXPECT_EQ(Ask("10 08 09 00").size(), 0u) << "one limit only";
    EXPECT_EQ(Ask("10 08 09 00 19 64 00").size(), 0u) << "more than the limits";
    EXPECT_EQ(Ask("10 07").size(), 0u) << "another service";
    EXPECT_EQ(Ask("10").size(), 0u);
}
