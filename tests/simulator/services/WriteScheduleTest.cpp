#include "WriteFixture.h"

class WriteSchedule : public test::WriteFixture {
protected:
    static constexpr unsigned Weekly = 123;
    static constexpr unsigned Exceptions = 38;

    void SetUp() override {
        MakeWith(R"(schedule{instance = 1, weekly_schedule = {monday = {{"08:00", real(1)}}},
                             exception_schedule = {{calendar = 1, priority = 1}}})");
    }

    void ExpectTaken(unsigned property, std::string const& value) {
        EXPECT_EQ(Write("schedule", property, value), Ack) << value;
        EXPECT_EQ(Read("schedule", property), value);
    }
};

namespace {

// The value of an entry, of each datatype.
constexpr char const* Values[] = {
    "00",
    "11",
    "10",
    "22 01 2C",
    "31 FE",
    "44 41 AC 00 00",
    "55 08 3F F4 00 00 00 00 00 00",
    "62 0A 14",
    "73 00 6F 6E",
    "82 05 A0",
    "91 02",
    "A4 7C 03 0F 05",
    "B4 0C 1E 00 00",
    "C4 01 40 00 07",
};

constexpr char const* RestOfWeek = " 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F";

}  // namespace

TEST_F(WriteSchedule, AWholeWeekWithValuesOfEveryDatatype) {
    for (char const* value : Values) {
        ExpectTaken(Weekly, std::string("0E B4 08 00 00 00 ") + value + " 0F" + RestOfWeek);
    }
    std::string day = "0E";
    for (char const* value : Values) {
        day += std::string(" B4 08 00 00 00 ") + value;
    }
    ExpectTaken(Weekly, day + " 0F" + RestOfWeek);
}

TEST_F(WriteSchedule, ADayAtATime) {
    for (int day = 1; day <= 7; ++day) {
        std::string const value =
            "0E B4 08 00 00 0" + std::to_string(day) + " 44 41 AC 00 00 B4 11 1E 00 00 00 0F";
        EXPECT_EQ(WriteElement("schedule", Weekly, day, value), Ack);
        EXPECT_EQ(Read("schedule", Weekly, day), value);
    }
    EXPECT_EQ(WriteElement("schedule", Weekly, 3, "0E 0F 0E 0F"), InvalidDataType) << "two days";
    EXPECT_EQ(WriteElement("schedule", Weekly, 8, "0E 0F"), "50 01 0F 91 02 91 2A");
    EXPECT_EQ(Read("schedule", Weekly, 0), "21 07");
}

TEST_F(WriteSchedule, AWeekHasSevenDays) {
    EXPECT_EQ(Write("schedule", Weekly, "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"), OutOfRange);
    EXPECT_EQ(Write("schedule", Weekly, "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"), OutOfRange);
    EXPECT_EQ(Write("schedule", Weekly, ""), OutOfRange);
    EXPECT_EQ(Read("schedule", Weekly, 1), "0E B4 08 00 00 00 44 3F 80 00 00 0F");
}

TEST_F(WriteSchedule, DaysThatAreNone) {
    for (char const* day : {"44 41 AC 00 00", "1E 1F", "0E 44 41 AC 00 00 0F", "0E B4 08 00 00 00 0F",
                            "0E B4 08 00 00 00 0E 0F 0F", "0E B4 08 00 00 00 19 01 0F",
                            "0E B3 08 00 00 00 0F", "0E A4 7C 03 0F 05 00 0F"}) {
        EXPECT_EQ(WriteElement("schedule", Weekly, 1, day), InvalidDataType) << day;
    }
    EXPECT_EQ(WriteElement("schedule", Weekly, 1, "0E B4 18 00 00 00 00 0F"), OutOfRange) << "24:00";
    EXPECT_EQ(WriteElement("schedule", Weekly, 1, "0E B4 08 FF 00 00 00 0F"), OutOfRange) << "08:*";
    EXPECT_EQ(Read("schedule", Weekly, 1), "0E B4 08 00 00 00 44 3F 80 00 00 0F");
}

TEST_F(WriteSchedule, ExceptionsOfEveryPeriod) {
    ExpectTaken(Exceptions, "0E 0C 7C 03 0F 05 0F 2E B4 08 00 00 00 21 01 2F 39 10");
    ExpectTaken(Exceptions, "0E 1E A4 7C 03 0F 05 A4 FF FF FF FF 1F 0F 2E B4 08 00 00 00 11 2F 39 05");
    ExpectTaken(Exceptions, "0E 2B 0C FF 02 0F 2E B4 0C 00 00 00 00 B4 0D 00 00 00 91 01 2F 39 05");
    ExpectTaken(Exceptions, "1C 01 80 00 07 2E B4 08 00 00 00 44 41 A0 00 00 2F 39 0A");
    ExpectTaken(Exceptions, "0E 0C FF FF FF FF 0F 2E 2F 39 01");
}

TEST_F(WriteSchedule, ExceptionsOfEveryDatatype) {
    for (char const* value : Values) {
        ExpectTaken(Exceptions, std::string("1C 01 80 00 07 2E B4 08 00 00 00 ") + value + " 2F 39 0A");
    }
}

TEST_F(WriteSchedule, TheNumberOfExceptionsFollowsTheWrite) {
    std::string const event = "1C 01 80 00 07 2E 2F 39 0A";
    ExpectTaken(Exceptions, event + " 0E 0C 7C 03 0F FF 0F 2E 2F 39 10 " + event);
    EXPECT_EQ(Read("schedule", Exceptions, 0), "21 03");
    EXPECT_EQ(WriteElement("schedule", Exceptions, 2, event), Ack);
    EXPECT_EQ(Read("schedule", Exceptions), event + ' ' + event + ' ' + event);
    EXPECT_EQ(WriteElement("schedule", Exceptions, 4, event), "50 01 0F 91 02 91 2A");
    ExpectTaken(Exceptions, "");
    EXPECT_EQ(Read("schedule", Exceptions, 0), "21 00");
}

TEST_F(WriteSchedule, APriorityInMoreOctetsThanItNeeds) {
    EXPECT_EQ(Write("schedule", Exceptions, "1C 01 80 00 07 2E 2F 3A 00 0A"), Ack);
    EXPECT_EQ(Read("schedule", Exceptions), "1C 01 80 00 07 2E 2F 39 0A");
}

TEST_F(WriteSchedule, EventsThatAreNone) {
    for (char const* event : {
             "39 00",
             "1C 01 80 00 07 2E 2F",
             "1C 01 80 00 07 39 0A",
             "2E 2F 39 0A",
             "1B 01 80 00 2E 2F 39 0A",
             "0E 0F 2E 2F 39 0A",
             "0E 0B 7C 03 0F 0F 2E 2F 39 0A",
             "0E 0C 7C 03 0F 05 0C 7C 03 0F 05 0F 2E 2F 39 0A",
             "0E 1E A4 7C 03 0F 05 1F 0F 2E 2F 39 0A",
             "0E 1E A4 7C 03 0F 05 B4 00 00 00 00 1F 0F 2E 2F 39 0A",
             "0E 1E A4 7C 03 0F 05 A4 7C 03 0F 05 00 1F 0F 2E 2F 39 0A",
             "0E 2A 0C FF 0F 2E 2F 39 0A",
             "0E 0C 7C 03 0F 05 0F 2E 44 41 AC 00 00 2F 39 0A",
         }) {
        EXPECT_EQ(Write("schedule", Exceptions, event), InvalidDataType) << event;
    }
    for (char const* event : {
             "1C 01 80 00 07 2E 2F 39 00",
             "1C 01 80 00 07 2E 2F 39 11",
             "1C 00 80 00 07 2E 2F 39 0A",
             "0E 0C 7C 0F 0F 05 0F 2E 2F 39 0A",
             "0E 2B 0F FF 02 0F 2E 2F 39 0A",
             "0E 2B 00 FF 02 0F 2E 2F 39 0A",
         }) {
        EXPECT_EQ(Write("schedule", Exceptions, event), OutOfRange) << event;
    }
    EXPECT_EQ(Read("schedule", Exceptions), "1C 01 80 00 01 2E 2F 39 01");
}

TEST_F(WriteSchedule, DefaultAndEffectivePeriod) {
    for (char const* value : Values) {
        ExpectTaken(174, value);
    }
    ExpectTaken(32, "A4 7C 03 0F 05 A4 FF FF FF FF");
    EXPECT_EQ(Write("schedule", 32, "A4 7C 03 0F 05"), InvalidDataType);
}
