#include "WriteFixture.h"

class WriteSchedule : public test::WriteFixture {
protected:
    static constexpr unsigned kWeekly = 123;
    static constexpr unsigned kExceptions = 38;

    void SetUp() override {
        makeWith(R"(schedule{instance = 1, weekly_schedule = {monday = {{"08:00", real(1)}}},
                             exception_schedule = {{calendar = 1, priority = 1}}})");
    }

    void expectTaken(unsigned property, std::string const& value) {
        EXPECT_EQ(write("schedule", property, value), kAck) << value;
        EXPECT_EQ(read("schedule", property), value);
    }
};

namespace {

// The value of an entry, of each datatype.
constexpr char const* kValues[] = {
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

constexpr char const* kRestOfWeek = " 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F";

}  // namespace

TEST_F(WriteSchedule, AWholeWeekWithValuesOfEveryDatatype) {
    for (char const* value : kValues) {
        expectTaken(kWeekly, std::string("0E B4 08 00 00 00 ") + value + " 0F" + kRestOfWeek);
    }
    std::string day = "0E";
    for (char const* value : kValues) {
        day += std::string(" B4 08 00 00 00 ") + value;
    }
    expectTaken(kWeekly, day + " 0F" + kRestOfWeek);
}

TEST_F(WriteSchedule, ADayAtATime) {
    for (int day = 1; day <= 7; ++day) {
        std::string const value =
            "0E B4 08 00 00 0" + std::to_string(day) + " 44 41 AC 00 00 B4 11 1E 00 00 00 0F";
        EXPECT_EQ(writeElement("schedule", kWeekly, day, value), kAck);
        EXPECT_EQ(read("schedule", kWeekly, day), value);
    }
    EXPECT_EQ(writeElement("schedule", kWeekly, 3, "0E 0F 0E 0F"), kInvalidDataType) << "two days";
    EXPECT_EQ(writeElement("schedule", kWeekly, 8, "0E 0F"), "50 01 0F 91 02 91 2A");
    EXPECT_EQ(read("schedule", kWeekly, 0), "21 07");
}

TEST_F(WriteSchedule, AWeekHasSevenDays) {
    EXPECT_EQ(write("schedule", kWeekly, "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"), kOutOfRange);
    EXPECT_EQ(write("schedule", kWeekly, "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"), kOutOfRange);
    EXPECT_EQ(write("schedule", kWeekly, ""), kOutOfRange);
    EXPECT_EQ(read("schedule", kWeekly, 1), "0E B4 08 00 00 00 44 3F 80 00 00 0F");
}

TEST_F(WriteSchedule, DaysThatAreNone) {
    for (char const* day : {"44 41 AC 00 00", "1E 1F", "0E 44 41 AC 00 00 0F", "0E B4 08 00 00 00 0F",
                            "0E B4 08 00 00 00 0E 0F 0F", "0E B4 08 00 00 00 19 01 0F",
                            "0E B3 08 00 00 00 0F", "0E A4 7C 03 0F 05 00 0F"}) {
        EXPECT_EQ(writeElement("schedule", kWeekly, 1, day), kInvalidDataType) << day;
    }
    EXPECT_EQ(writeElement("schedule", kWeekly, 1, "0E B4 18 00 00 00 00 0F"), kOutOfRange) << "24:00";
    EXPECT_EQ(writeElement("schedule", kWeekly, 1, "0E B4 08 FF 00 00 00 0F"), kOutOfRange) << "08:*";
    EXPECT_EQ(read("schedule", kWeekly, 1), "0E B4 08 00 00 00 44 3F 80 00 00 0F");
}

TEST_F(WriteSchedule, ExceptionsOfEveryPeriod) {
    expectTaken(kExceptions, "0E 0C 7C 03 0F 05 0F 2E B4 08 00 00 00 21 01 2F 39 10");
    expectTaken(kExceptions, "0E 1E A4 7C 03 0F 05 A4 FF FF FF FF 1F 0F 2E B4 08 00 00 00 11 2F 39 05");
    expectTaken(kExceptions, "0E 2B 0C FF 02 0F 2E B4 0C 00 00 00 00 B4 0D 00 00 00 91 01 2F 39 05");
    expectTaken(kExceptions, "1C 01 80 00 07 2E B4 08 00 00 00 44 41 A0 00 00 2F 39 0A");
    expectTaken(kExceptions, "0E 0C FF FF FF FF 0F 2E 2F 39 01");
}

TEST_F(WriteSchedule, ExceptionsOfEveryDatatype) {
    for (char const* value : kValues) {
        expectTaken(kExceptions, std::string("1C 01 80 00 07 2E B4 08 00 00 00 ") + value + " 2F 39 0A");
    }
}

TEST_F(WriteSchedule, TheNumberOfExceptionsFollowsTheWrite) {
    std::string const event = "1C 01 80 00 07 2E 2F 39 0A";
    expectTaken(kExceptions, event + " 0E 0C 7C 03 0F FF 0F 2E 2F 39 10 " + event);
    EXPECT_EQ(read("schedule", kExceptions, 0), "21 03");
    EXPECT_EQ(writeElement("schedule", kExceptions, 2, event), kAck);
    EXPECT_EQ(read("schedule", kExceptions), event + ' ' + event + ' ' + event);
    EXPECT_EQ(writeElement("schedule", kExceptions, 4, event), "50 01 0F 91 02 91 2A");
    expectTaken(kExceptions, "");
    EXPECT_EQ(read("schedule", kExceptions, 0), "21 00");
}

TEST_F(WriteSchedule, APriorityInMoreOctetsThanItNeeds) {
    EXPECT_EQ(write("schedule", kExceptions, "1C 01 80 00 07 2E 2F 3A 00 0A"), kAck);
    EXPECT_EQ(read("schedule", kExceptions), "1C 01 80 00 07 2E 2F 39 0A");
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
        EXPECT_EQ(write("schedule", kExceptions, event), kInvalidDataType) << event;
    }
    for (char const* event : {
             "1C 01 80 00 07 2E 2F 39 00",
             "1C 01 80 00 07 2E 2F 39 11",
             "1C 00 80 00 07 2E 2F 39 0A",
             "0E 0C 7C 0F 0F 05 0F 2E 2F 39 0A",
             "0E 2B 0F FF 02 0F 2E 2F 39 0A",
             "0E 2B 00 FF 02 0F 2E 2F 39 0A",
         }) {
        EXPECT_EQ(write("schedule", kExceptions, event), kOutOfRange) << event;
    }
    EXPECT_EQ(read("schedule", kExceptions), "1C 01 80 00 01 2E 2F 39 01");
}

TEST_F(WriteSchedule, DefaultAndEffectivePeriod) {
    for (char const* value : kValues) {
        expectTaken(174, value);
    }
    expectTaken(32, "A4 7C 03 0F 05 A4 FF FF FF FF");
    EXPECT_EQ(write("schedule", 32, "A4 7C 03 0F 05"), kInvalidDataType);
}
