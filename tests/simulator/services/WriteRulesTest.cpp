#include "Mistake.h"
#include "WriteFixture.h"

// Values that a strict device rejects for their datatype and a lenient one accepts.
class WriteRules : public test::WriteFixture {
protected:
    void MakeDevice(std::string const& rules) {
        MakeWith(R"(
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
    static std::vector<Row> const& Numbers() {
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

TEST_F(WriteRules, AStrictDeviceRequiresTheDatatype) {
    for (char const* rules : {"", "writes = 'strict',"}) {
        MakeDevice(rules);
        for (Row const& row : Numbers()) {
            std::string const before = Read(row.type, row.property);
            EXPECT_EQ(Write(row.type, row.property, row.written), InvalidDataType) << row.type << row.written;
            EXPECT_EQ(Read(row.type, row.property), before);
        }
    }
}

TEST_F(WriteRules, ALenientDeviceConvertsNumbers) {
    MakeDevice("writes = 'lenient',");
    for (Row const& row : Numbers()) {
        EXPECT_EQ(Write(row.type, row.property, row.written), Ack) << row.type << ' ' << row.written;
        EXPECT_EQ(Read(row.type, row.property), row.taken) << row.type << ' ' << row.written;
    }
}

TEST_F(WriteRules, ALenientDeviceKeepsItsRanges) {
    MakeDevice("writes = 'lenient',");
    EXPECT_EQ(Write("binary_value", 85, "21 02"), OutOfRange);
    EXPECT_EQ(Write("analog_value", 81, "91 02"), OutOfRange) << "a Boolean of 2";
    EXPECT_EQ(Write("positive_integer_value", 85, "31 FE"), OutOfRange);
    EXPECT_EQ(Write("positive_integer_value", 85, "44 7F C0 00 00"), OutOfRange) << "not a number";
    EXPECT_EQ(Write("integer_value", 85, "24 FF FF FF FF"), OutOfRange);
    EXPECT_EQ(Write("analog_value", 85, "55 08 7F E0 00 00 00 00 00 00"), OutOfRange);
    EXPECT_EQ(Write("multi_state_value", 85, "44 00 00 00 00"), OutOfRange);
}

TEST_F(WriteRules, WhatIsNoNumberIsNeverConverted) {
    MakeDevice("writes = 'lenient',");
    EXPECT_EQ(Write("analog_value", 85, "73 00 31 32"), InvalidDataType);
    EXPECT_EQ(Write("analog_value", 85, "00"), InvalidDataType);
    EXPECT_EQ(Write("analog_value", 28, "21 05"), InvalidDataType);
    EXPECT_EQ(Write("octet_string_value", 85, "73 00 31 32"), InvalidDataType);
    EXPECT_EQ(Write("datetime_value", 85, "B4 00 00 00 00 A4 7C 03 0F 05"), InvalidDataType);
}

TEST_F(WriteRules, LenientSchedules) {
    std::string const wild = "0E B4 08 FF 00 00 21 01 0F";
    std::string const zeros = "0E 2B 00 00 00 0F 2E B4 0C 00 00 00 21 01 2F 39 05";
    MakeDevice("writes = 'strict',");
    EXPECT_EQ(WriteElement("schedule", 123, 1, wild), OutOfRange);
    EXPECT_EQ(Write("schedule", 38, zeros), OutOfRange);
    MakeDevice("writes = 'lenient',");
    EXPECT_EQ(WriteElement("schedule", 123, 1, wild), Ack);
    EXPECT_EQ(Read("schedule", 123, 1), wild);
    EXPECT_EQ(Write("schedule", 38, zeros), Ack);
    EXPECT_EQ(Read("schedule", 38), zeros);
}

TEST_F(WriteRules, MistakesInADeviceFile) {
    auto const mistake = [](std::string const& text) -> std::string {
        try {
            simulator::ParseDeviceFile("plant.lua", text);
        } catch (simulator::Mistake const& found) {
            return found.what();
        }
        return "no mistake";
    };
    std::string const device = "plant.lua:1: device: ";
    EXPECT_EQ(mistake("device{instance = 1, writes = 'loose'}"),
              device + "writes: must be \"strict\" or \"lenient\", not \"loose\"");
    EXPECT_EQ(mistake("device{instance = 1, writes = 1}"), device + "writes: must be a text, not 1");
    std::string const loop = "device{instance = 1, objects = {loop{instance = 1, ";
    EXPECT_EQ(mistake(loop + "read_only = 5}}}"), device + "loop 1: read_only: must be a list, not 5");
    EXPECT_EQ(mistake(loop + "read_only = {'speed'}}}}"),
              device + "loop 1: read_only: unknown property \"speed\"");
    EXPECT_EQ(mistake(loop + "read_only = {'polarity'}}}}"),
              device + "loop 1: read_only: this type has no property \"polarity\"");
    EXPECT_EQ(mistake(loop + "writable = true}}}"), device + "loop 1: writable: must be a list, not true");
    EXPECT_EQ(mistake(loop + "writable = {'status_flags'}}}}"),
              device + "loop 1: writable: status_flags cannot be written");
}
