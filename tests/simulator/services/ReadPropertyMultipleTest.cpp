#include "StationFixture.h"

class ReadPropertyMultiple : public test::StationFixture {
protected:
    void SetUp() override {
        MakeWith(R"(
            time_value{instance = 1, name = "T", present_value = "12:30"},
            multi_state_value{instance = 3, state_text = {"off", "on"}},
        )");
    }
};

TEST_F(ReadPropertyMultiple, TwoPropertiesOfAnObjectInTheOrderAsked) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 6F 09 55 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 6F 4E 82 04 00 4F 29 55 4E B4 0C 1E 00 00 4F 1F");
}

TEST_F(ReadPropertyMultiple, SeveralObjects) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 4F 1F 0C 04 C0 00 03 1E 09 55 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 4F 4E 91 32 4F 1F 0C 04 C0 00 03 1E 29 55 4E 21 01 4F 1F");
}

TEST_F(ReadPropertyMultiple, ArrayIndices) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 04 C0 00 03 1E 09 6E 19 00 09 6E 19 01 09 6E 19 03 1F"),
              "30 01 0E 0C 04 C0 00 03 1E 29 6E 39 00 4E 21 02 4F 29 6E 39 01 4E 74 00 6F 66 66 4F "
              "29 6E 39 03 5E 91 02 91 2A 5F 1F");
}

TEST_F(ReadPropertyMultiple, ErrorsStandInThePlaceOfTheirProperty) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 7B 09 4F 09 55 19 01 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 7B 5E 91 02 91 20 5F 29 4F 4E 91 32 4F "
              "29 55 39 01 5E 91 02 91 32 5F 1F");
}

TEST_F(ReadPropertyMultiple, AnUnknownObjectHasAnErrorForEachProperty) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 09 1E 09 55 09 08 1F"),
              "30 01 0E 0C 0C 80 00 09 1E 29 55 5E 91 01 91 1F 5F 29 08 5E 91 01 91 1F 5F 1F");
}

TEST_F(ReadPropertyMultiple, All) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 08 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 4B 4E C4 0C 80 00 01 4F 29 4D 4E 72 00 54 4F 29 4F 4E 91 32 4F "
              "29 55 4E B4 0C 1E 00 00 4F 29 1C 4E 71 00 4F 29 6F 4E 82 04 00 4F 29 24 4E 91 00 4F "
              "29 67 4E 91 00 4F 29 51 4E 10 4F 1F");
}

TEST_F(ReadPropertyMultiple, Required) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 69 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 4B 4E C4 0C 80 00 01 4F 29 4D 4E 72 00 54 4F 29 4F 4E 91 32 4F "
              "29 55 4E B4 0C 1E 00 00 4F 29 6F 4E 82 04 00 4F 1F");
}

TEST_F(ReadPropertyMultiple, Optional) {
    EXPECT_EQ(
        Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 50 1F"),
        "30 01 0E 0C 0C 80 00 01 1E 29 1C 4E 71 00 4F 29 24 4E 91 00 4F 29 67 4E 91 00 4F 29 51 4E 10 4F 1F");
}

TEST_F(ReadPropertyMultiple, ASpecialIdentifierHasNoIndex) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 08 19 01 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 29 08 39 01 5E 91 02 91 32 5F 1F");
}

TEST_F(ReadPropertyMultiple, PropertyListNamesWhatTheObjectHas) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 0A 01 73 1F"),
              "30 01 0E 0C 0C 80 00 01 1E 2A 01 73 4E 91 55 91 1C 91 6F 91 24 91 67 91 51 4F 1F");
}

TEST_F(ReadPropertyMultiple, TheDeviceByItsWildcard) {
    EXPECT_EQ(Answer("02 74 01 0E 0C 02 3F FF FF 1E 09 4F 1F"),
              "30 01 0E 0C 02 00 00 64 1E 29 4F 4E 91 08 4F 1F");
}

TEST_F(ReadPropertyMultiple, StatusFlagsFollowTheirSources) {
    MakeWith(R"(
        analog_input{instance = 1, event_state = "high-limit", reliability = "no-sensor", out_of_service = true},
        analog_input{instance = 2, reliability = toggle{period = 10}},
        analog_input{instance = 3, status_flags = {overridden = true}},
        analog_input{instance = 4, status_flags = "1001"},
    )");
    auto const flags = [this](std::string const& instance) {
        std::string const text = Answer("02 74 01 0E 0C 00 00 00 " + instance + " 1E 09 6F 1F");
        return text.substr(text.find("4E ") + 3, 8);
    };
    EXPECT_EQ(flags("01"), "82 04 D0");
    EXPECT_EQ(flags("02"), "82 04 00");
    EXPECT_EQ(flags("03"), "82 04 20");
    EXPECT_EQ(flags("04"), "82 04 90");
    Wait(std::chrono::seconds(5));
    EXPECT_EQ(flags("02"), "82 04 40");
}

TEST_F(ReadPropertyMultiple, Rejects) {
    EXPECT_EQ(Answer("02 74 01 0E"), "60 01 05") << "no parameters";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01"), "60 01 05") << "no list";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E"), "60 01 05") << "list without end";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 1F"), "60 01 05") << "an empty list";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 55"), "60 01 05") << "list without end";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 29 55 1F"), "60 01 04") << "another tag";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 55 2F"), "60 01 05") << "another end";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 1E 1E 1E 1E 1E"), "60 01 04") << "nested lists";
    EXPECT_EQ(Answer("02 74 01 0E 0C 0C 80 00 01 1E 09 55 1F 00"), "60 01 04") << "more after it";
}

TEST_F(ReadPropertyMultiple, CutAnywhereItIsRejected) {
    test::Octets const whole = test::Hex("02 74 01 0E 0C 04 C0 00 03 1E 0A 00 6E 19 01 09 55 1F");
    for (std::size_t length = 4; length < whole.size(); ++length) {
        test::Octets const cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(Answer(test::ToHex(cut)).substr(0, 5), "60 01") << length;
    }
    EXPECT_EQ(Answer(test::ToHex(whole)).substr(0, 8), "30 01 0E");
}

// A short request must not make the device build an answer without bound.
TEST_F(ReadPropertyMultiple, AnAnswerBeyondAllMeasureIsAborted) {
    std::string entries;
    for (int i = 0; i < 12; ++i) {
        entries +=
            "{'0" + std::to_string(i % 10) + ":00', character_string('" + std::string(2000, 'x') + "')},";
    }
    MakeWith("schedule{instance = 1, weekly_schedule = {monday = {" + entries + "}}}");
    std::string request = "02 75 01 0E 0C 04 40 00 01 1E";
    for (int i = 0; i < 700; ++i) {
        request += " 09 7B";
    }
    EXPECT_EQ(Answer(request + " 1F"), "71 01 01");
}
