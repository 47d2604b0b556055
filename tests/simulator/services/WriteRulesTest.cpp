#include "Mistake.h"
#include "WriteFixture.h"

// What a strict device refuses for its datatype, and a lenient one takes.
class WriteRules : public test::WriteFixture {
protected:
    void makeDevice(std::string const& rules) {
        makeWith(R"(
            analog_value{instance = 1}, binary_value{instance = 1}, multi_state_value{instance = 1},
            integer_value{instance = 1}, positive_integer_value{instance = 1}, large_analog_value{instance = 1},
            datetime_value{instance = 1}, octet_string_value{instance = 1}, schedule{instance = 1},
        )",
                 rules);
    }

    struct Row {
        char const* type;
        unsigned property;
        char const* written;
        char const* taken;  // by a lenient device
    };
    static std::vector<Row> const& numbers() {
        static std::vector<Row> const rows{
            {"analog_value", 85, "91 01", "44 3F 80 00 00"},
            {"analog_value", 85, "11", "44 3F 80 00 00"},
            {"analog_value", 85, "31 FE", "44 C0 00 00 00"},
            {"analog_value", 85, "55 08 3F F4 00 00 00 00 00 00", "44 3F A0 00 00"},
            {"analog_value", 81, "91 01", "11"},
            {"analog_value", 81, "91 00", "10"},
            {"analog_value", 81, "21 01", "11"},
            {"binary_value", 85, "11", "91 01"},
            {"binary_value", 85, "21 01", "91 01"},
            {"binary_value", 85, "44 3F 80 00 00", "91 01"},
            {"multi_state_value", 85, "91 02", "21 02"},
            {"multi_state_value", 85, "44 40 00 00 00", "21 02"},
            {"integer_value", 85, "21 C8", "32 00 C8"},
            {"integer_value", 85, "44 C0 39 99 9A", "31 FD"},
            {"positive_integer_value", 85, "31 07", "21 07"},
            {"positive_integer_value", 85, "91 07", "21 07"},
            {"large_analog_value", 85, "44 3F A0 00 00", "55 08 3F F4 00 00 00 00 00 00"},
        };
        return rows;
    }
};

TEST_F(WriteRules, AStrictDeviceWantsTheDatatype) {
    for (char const* rules : {"", "writes = 'strict',"}) {
        makeDevice(rules);
        for (Row const& row : numbers()) {
            std::string const before = read(row.type, row.property);
            EXPECT_EQ(write(row.type, row.property, row.written), kInvalidDataType)
                << row.type << row.written;
            EXPECT_EQ(read(row.type, row.property), before);
        }
    }
}

TEST_F(WriteRules, ALenientDeviceConvertsNumbers) {
    makeDevice("writes = 'lenient',");
    for (Row const& row : numbers()) {
        EXPECT_EQ(write(row.type, row.property, row.written), kAck) << row.type << ' ' << row.written;
        EXPECT_EQ(read(row.type, row.property), row.taken) << row.type << ' ' << row.written;
    }
}

TEST_F(WriteRules, ALenientDeviceKeepsItsRanges) {
    makeDevice("writes = 'lenient',");
    EXPECT_EQ(write("binary_value", 85, "21 02"), kOutOfRange);
    EXPECT_EQ(write("analog_value", 81, "91 02"), kOutOfRange) << "a Boolean of 2";
    EXPECT_EQ(write("positive_integer_value", 85, "31 FE"), kOutOfRange);
    EXPECT_EQ(write("positive_integer_value", 85, "44 7F C0 00 00"), kOutOfRange) << "not a number";
    EXPECT_EQ(write("integer_value", 85, "24 FF FF FF FF"), kOutOfRange);
    EXPECT_EQ(write("analog_value", 85, "55 08 7F E0 00 00 00 00 00 00"), kOutOfRange);
    EXPECT_EQ(write("multi_state_value", 85, "44 00 00 00 00"), kOutOfRange);
}

TEST_F(WriteRules, WhatIsNoNumberIsNeverConverted) {
    makeDevice("writes = 'lenient',");
    EXPECT_EQ(write("analog_value", 85, "73 00 31 32"), kInvalidDataType);
    EXPECT_EQ(write("analog_value", 85, "00"), kInvalidDataType);
    EXPECT_EQ(write("analog_value", 28, "21 05"), kInvalidDataType);
    EXPECT_EQ(write("octet_string_value", 85, "73 00 31 32"), kInvalidDataType);
    EXPECT_EQ(write("datetime_value", 85, "B4 00 00 00 00 A4 7C 03 0F 05"), kInvalidDataType);
}

TEST_F(WriteRules, LenientSchedules) {
    std::string const wild = "0E B4 08 FF 00 00 21 01 0F";
    std::string const zeros = "0E 2B 00 00 00 0F 2E B4 0C 00 00 00 21 01 2F 39 05";
    makeDevice("writes = 'strict',");
    EXPECT_EQ(writeElement("schedule", 123, 1, wild), kOutOfRange);
    EXPECT_EQ(write("schedule", 38, zeros), kOutOfRange);
    makeDevice("writes = 'lenient',");
    EXPECT_EQ(writeElement("schedule", 123, 1, wild), kAck);
    EXPECT_EQ(read("schedule", 123, 1), wild);
    EXPECT_EQ(write("schedule", 38, zeros), kAck);
    EXPECT_EQ(read("schedule", 38), zeros);
}

TEST_F(WriteRules, MistakesInADeviceFile) {
    auto const mistake = [](std::string const& text) -> std::string {
        try {
            simulator::parseDeviceFile("plant.lua", text);
        } catch (simulator::Mistake const& found) {
            return found.what();
        }
        return "no mistake";
    };
    std::string const device = "plant.lua:1: device: ";
    EXPECT_EQ(mistake("device{instance = 1, writes = 'loose'}"),
              device + "writes: must be \"strict\" or \"lenient\", not \"loose\"");
    EXPECT_EQ(mistake("device{instance = 1, writes = 1}"),
              device + "writes: must be a text, not the number 1");
    std::string const loop = "device{instance = 1, objects = {loop{instance = 1, ";
    EXPECT_EQ(mistake(loop + "read_only = 5}}}"),
              device + "loop 1: read_only: must be a list, not the number 5");
    EXPECT_EQ(mistake(loop + "read_only = {'speed'}}}}"),
              device + "loop 1: read_only: unknown property \"speed\"");
    EXPECT_EQ(mistake(loop + "read_only = {'polarity'}}}}"),
              device + "loop 1: read_only: this type has no property \"polarity\"");
    EXPECT_EQ(mistake(loop + "writable = true}}}"), device + "loop 1: writable: must be a list, not true");
    EXPECT_EQ(mistake(loop + "writable = {'status_flags'}}}}"),
              device + "loop 1: writable: status_flags cannot be written");
}
