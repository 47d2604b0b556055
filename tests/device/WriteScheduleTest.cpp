// Schedules: from their text to the octets of a whole write, and the texts that are refused.

#include "WriteFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

// An entry of each type after its time, and its tag.
struct Entry {
    int type;
    char const* tail;
    char const* octets;
};

constexpr Entry Entries[] = {
    {0, "0,1,0", "00"},
    {1, "1,1,1", "11"},
    {2, "2,2,45", "21 01"},
    {3, "3,2,-7", "31 01"},
    {4, "4,9,21.500000", "44 41 AC 00 00"},
    {5, "5,9,-1.500000", "55 08 BF F8 00 00 00 00 00 00"},
    {6, "6,4,0aff", "62 0A FF"},
    {7, "7,5,hello", "75 06 00 68 65 6C 6C 6F"},
    {8, "8,4,1010", "82 04 A0"},
    {9, "9,1,2", "94 00 00 00 02"},
    {10, "10,9,315032024", "A4 7C 03 0F 03"},
    {11, "11,8,06300000", "B4 06 1E 00 00"},
    {12, "12,0,1234", "C4 00 00 04 D2"},
};

class WriteSchedule : public WriteFixture {
protected:
    void WriteWeek(std::string const& text) {
        Write(Object::Schedule, Property::Weekly_Schedule, Text(text));
    }
    void WriteEvents(std::string const& text) {
        Write(Object::Schedule, Property::Exception_Schedule, Text(text));
    }

    ScriptedExchange& ExpectWrite(unsigned invokeId, unsigned property, std::string const& octets) {
        return network.Expect(WriteRequest(invokeId, ObjectHex(Object::Schedule, 1), property, octets))
            .Answer(WriteAck(invokeId));
    }

    // The log for a text that is not sent.
    std::string WeekRefusal(std::string const& text) {
        log.Clear();
        WriteWeek(text);
        return log.Text();
    }
    std::string EventsRefusal(std::string const& text) {
        log.Clear();
        WriteEvents(text);
        return log.Text();
    }
};

TEST_F(WriteSchedule, WeekWithAnEntryOfEachTypeHasItsOctets) {
    unsigned invokeId = 0;
    for (Entry const& entry : Entries) {
        SCOPED_TRACE(entry.type);
        ExpectWrite(
            ++invokeId, 123,
            "0E B4 06 1E 00 00 " + std::string(entry.octets) + " 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F");
        WriteWeek("06300000," + std::string(entry.tail) + ";;;;;;;");
        EXPECT_EQ(log.Text(), "");
    }
    EXPECT_EQ(network.SentDatagrams().size(), 13u);
}

TEST_F(WriteSchedule, EventWithAnEntryOfEachTypeHasItsOctets) {
    unsigned invokeId = 0;
    for (Entry const& entry : Entries) {
        SCOPED_TRACE(entry.type);
        ExpectWrite(++invokeId, 38,
                    "0E 0C 7C 03 0F 03 0F 2E B4 06 1E 00 00 " + std::string(entry.octets) + " 2F 39 10");
        WriteEvents("0,315032024,16,06300000," + std::string(entry.tail) + ";");
        EXPECT_EQ(log.Text(), "");
    }
    EXPECT_EQ(network.SentDatagrams().size(), 13u);
}

TEST_F(WriteSchedule, EventsOfEveryPeriodHaveTheirOctets) {
    ExpectWrite(1, 38,
                "0E 0C 7C 03 0F 03 0F 2E B4 08 00 00 00 11 2F 39 10 "
                "0E 1E A4 7C 01 01 01 A4 7C 0C 1F 02 1F 0F 2E B4 0C 00 00 00 00 2F 39 03 "
                "0E 2B 00 01 02 0F 2E B4 0D 00 00 00 94 00 00 00 01 2F 39 05 "
                "1C 01 80 00 07 2E B4 08 00 00 00 44 41 A0 00 00 2F 39 0A");
    WriteEvents(
        "0,315032024,16,08000000,1,1,1;1,101012024,231122024,3,12000000,;2,**12,5,13000000,9,1,1;"
        "3,7,10,08000000,4,9,20.000000;");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteSchedule, PriorityFollowsTheScheduleToo) {
    MakeWriter(16);
    network
        .Expect(WriteRequest(1, ObjectHex(Object::Schedule, 1), 123,
                             "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F", "49 10"))
        .Answer(WriteAck(1));
    WriteWeek(";;;;;;;");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteSchedule, InvalidWeekIsLoggedAndNothingIsSent) {
    EXPECT_EQ(WeekRefusal(""), "Number days != 7");
    EXPECT_EQ(WeekRefusal("a;b;c;d;e;f"), "Number days != 7");
    EXPECT_EQ(WeekRefusal(";;;;;;;;"), "Number days != 7");
    EXPECT_EQ(WeekRefusal("12000000,4,9;;;;;;;"), "Number not odd");
    EXPECT_EQ(WeekRefusal("12000000,7,0,;;;;;;;"), "Number not odd");
    EXPECT_EQ(WeekRefusal("12000000,10,9,3150320;;;;;;;"), "Date - len != 9");
    EXPECT_EQ(WeekRefusal("12000000,11,7,12000000;;;;;;;"), "Time - len != 8");
    EXPECT_EQ(WeekRefusal("1200,9,1,2;;;;;;;"), "Unknown error");
    EXPECT_EQ(WeekRefusal("12000000,x,1,2;;;;;;;"), "Unknown error");
    EXPECT_EQ(WeekRefusal("12000000,4,1,x;;;;;;;"), "Unknown error");
    EXPECT_EQ(WeekRefusal("12000000,2,10,4294967295;;;;;;;"), "Unknown error");
    EXPECT_EQ(WeekRefusal("%s%n;%s"), "Number days != 7") << "a user's text is not logged";
    EXPECT_TRUE(network.SentDatagrams().empty());
    EXPECT_EQ(network.Elapsed(), 0);
}

TEST_F(WriteSchedule, InvalidEventsAreLoggedAndNothingIsSent) {
    EXPECT_EQ(EventsRefusal(""), "ExceptionSchedule value = 0");
    EXPECT_EQ(EventsRefusal("3,7"), "ExceptionSchedule value = 0");
    EXPECT_EQ(EventsRefusal("0,315032024,16,08000000,1,1;"), "ExceptionSchedule value = 0");
    EXPECT_EQ(EventsRefusal("0,31503202,16,08000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
    EXPECT_EQ(EventsRefusal("1,315032024,1,16,08000000,1,1,1;"), "ExceptionSchedule Date - len != 9");
    EXPECT_EQ(EventsRefusal("3,7,10,08000000,10,9,3150320;"), "Date - len != 9");
    EXPECT_EQ(EventsRefusal("3,7,10,08000000,11,7,12000000;"), "Time - len != 8");
    EXPECT_EQ(EventsRefusal("x,7,10,08000000,1,1,1;"), "Unknown error");
    EXPECT_EQ(EventsRefusal("3,7,10,0800,1,1,1;"), "Unknown error");
    EXPECT_EQ(EventsRefusal("3,7,10,08000000,5,5,1e999;"), "Unknown error");
    EXPECT_TRUE(network.SentDatagrams().empty());
    EXPECT_EQ(network.Elapsed(), 0);
}

TEST_F(WriteSchedule, LoneEventOfAnUnknownPeriodIsAPriorityOf0) {
    ExpectWrite(1, 38, "39 00");
    WriteEvents("9");
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
