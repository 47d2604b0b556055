#include "WriteFixture.h"

class WriteProperty : public test::WriteFixture {
protected:
    void SetUp() override {
        makeWith(R"(
            analog_value{instance = 1, present_value = 20, min_pres_value = 5, max_pres_value = 35},
            analog_input{instance = 1, present_value = ramp{from = 0, to = 10, period = 10}},
            binary_value{instance = 1}, binary_output{instance = 1},
            multi_state_value{instance = 1, number_of_states = 3, state_text = {"a", "b", "c"},
                              alarm_values = {1}, writable = {"state_text"}},
            loop{instance = 1}, schedule{instance = 1}, lighting_output{instance = 1},
            octet_string_value{instance = 1}, bit_string_value{instance = 1}, date_value{instance = 1},
            time_value{instance = 1}, datetime_value{instance = 1}, integer_value{instance = 1},
            positive_integer_value{instance = 1}, large_analog_value{instance = 1},
            accumulator{instance = 1}, averaging{instance = 1}, pulse_converter{instance = 1},
        )");
    }
};

TEST_F(WriteProperty, OctetsOfAWriteAndItsAck) {
    EXPECT_EQ(answer("00 04 07 0F 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F 49 08"), "20 07 0F");
    EXPECT_EQ(answer("00 04 08 0C 0C 00 80 00 01 19 55"),
              "30 08 0C 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F");
}

TEST_F(WriteProperty, Errors) {
    EXPECT_EQ(answer("00 04 01 0F 0C 00 80 00 02 19 55 3E 44 41 AC 00 00 3F"), "50 01 0F 91 01 91 1F")
        << "unknown object";
    EXPECT_EQ(write("analog_value", 123, "44 41 AC 00 00"), "50 01 0F 91 02 91 20") << "unknown property";
    EXPECT_EQ(write("analog_value", 77, "73 00 6F 6E"), kDenied) << "Object_Name";
    EXPECT_EQ(write("analog_value", 111, "82 04 00"), kDenied) << "Status_Flags";
    EXPECT_EQ(write("binary_output", 87, "91 01", 0, 8), kDenied) << "Priority_Array";
    EXPECT_EQ(write("analog_value", 85, "91 01"), kInvalidDataType);
    EXPECT_EQ(write("analog_value", 85, "44 42 20 00 00"), kOutOfRange) << "above Max_Pres_Value";
    EXPECT_EQ(write("analog_value", 85, "44 40 80 00 00"), kOutOfRange) << "below Min_Pres_Value";
    EXPECT_EQ(writeElement("analog_value", 85, 1, "44 41 AC 00 00"), "50 01 0F 91 02 91 32") << "no array";
    EXPECT_EQ(writeElement("schedule", 123, 8, "0E 0F"), "50 01 0F 91 02 91 2A") << "no such element";
    EXPECT_EQ(writeElement("schedule", 123, 0, "21 05"), kDenied) << "the number of elements";
    EXPECT_EQ(write("analog_value", 28, "73 04 6F 6E"), "50 01 0F 91 02 91 29") << "UCS-2";
    EXPECT_EQ(read("analog_value", 85), "44 41 A0 00 00") << "none of them had an effect";
}

TEST_F(WriteProperty, Rejects) {
    std::string const object = "02 75 01 0F 0C 00 80 00 01 ";
    EXPECT_EQ(answer("02 75 01 0F"), "60 01 05") << "no parameters";
    EXPECT_EQ(answer(object), "60 01 05") << "no property";
    EXPECT_EQ(answer(object + "19 55"), "60 01 05") << "no value";
    EXPECT_EQ(answer(object + "19 55 49 08"), "60 01 04") << "a priority in place of the value";
    EXPECT_EQ(answer(object + "19 55 3E 44 41 AC 00 00"), "60 01 05") << "a value without end";
    EXPECT_EQ(answer(object + "19 55 3E 44 41 AC 00 00 4F"), "60 01 04") << "another bracket's end";
    EXPECT_EQ(answer(object + "19 55 3E 44 41 AC 3F"), "60 01 04") << "a value cut off";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 49 00"), "60 01 06") << "priority 0";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 49 11"), "60 01 06") << "priority 17";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 4A 01 08"), "60 01 06") << "priority 264";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 48"), "60 01 03") << "priority of no octet";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 59 08"), "60 01 07") << "another parameter";
    EXPECT_EQ(answer(object + "19 55 3E 00 3F 49 08 00"), "60 01 07") << "one octet more";
    EXPECT_EQ(answer("02 75 01 0F C4 00 80 00 01 19 55 3E 00 3F"), "60 01 04") << "application tag";
    EXPECT_EQ(answer(object + "19 55 29 01 29 01 3E 00 3F"), "60 01 04") << "two indices";
}

TEST_F(WriteProperty, CutAnywhereItIsRejectedAndHasNoEffect) {
    test::Octets const whole =
        test::Hex("02 75 01 0F 0C 04 40 00 01 19 7B 29 02 3E 0E B4 08 00 00 00 44 41 A0 00 00 0F 3F 49 08");
    for (std::size_t length = 4; length < whole.size(); ++length) {
        bool const isComplete = length == whole.size() - 2;  // the priority is optional
        std::string const text =
            answer(test::ToHex(test::Octets(whole.begin(), whole.begin() + static_cast<int>(length))));
        EXPECT_EQ(text.substr(0, 5), isComplete ? "20 01" : "60 01") << length;
        EXPECT_EQ(read("schedule", 123, 2), isComplete ? "0E B4 08 00 00 00 44 41 A0 00 00 0F" : "0E 0F");
        writeElement("schedule", 123, 2, "0E 0F");
    }
}

TEST_F(WriteProperty, PresentValueOfEveryDatatype) {
    struct Row {
        char const* type;
        char const* value;
    };
    constexpr Row rows[] = {
        {"analog_value", "44 41 AC 00 00"},
        {"binary_value", "91 01"},
        {"multi_state_value", "21 03"},
        {"integer_value", "32 FE D4"},
        {"positive_integer_value", "24 FF FF FF FF"},
        {"large_analog_value", "55 08 3F F4 00 00 00 00 00 00"},
        {"octet_string_value", "65 05 0A 14 C0 FF EE"},
        {"bit_string_value", "82 05 A0"},
        {"date_value", "A4 7C 03 0F FF"},
        {"time_value", "B4 08 1E 00 05"},
        {"datetime_value", "A4 7C 03 0F FF B4 08 1E 00 05"},
        {"lighting_output", "44 42 48 00 00"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(write(row.type, 85, row.value), kAck) << row.type;
        EXPECT_EQ(read(row.type, 85), row.value) << row.type;
    }
}

TEST_F(WriteProperty, NumbersComeBackInAsFewOctetsAsHoldThem) {
    EXPECT_EQ(write("positive_integer_value", 85, "24 00 00 00 07"), kAck);
    EXPECT_EQ(read("positive_integer_value", 85), "21 07");
    EXPECT_EQ(write("integer_value", 85, "34 FF FF FF FE"), kAck);
    EXPECT_EQ(read("integer_value", 85), "31 FE");
}

TEST_F(WriteProperty, ValuesOutOfRange) {
    EXPECT_EQ(write("binary_value", 85, "91 02"), kOutOfRange);
    EXPECT_EQ(write("binary_output", 85, "91 02", 8), kOutOfRange);
    EXPECT_EQ(write("multi_state_value", 85, "21 00"), kOutOfRange);
    EXPECT_EQ(write("multi_state_value", 85, "21 04"), kOutOfRange);
    EXPECT_EQ(write("analog_value", 85, "44 7F C0 00 00"), kOutOfRange) << "not a number";
    EXPECT_EQ(write("analog_value", 45, "44 7F 80 00 00"), kOutOfRange) << "infinite";
    EXPECT_EQ(write("positive_integer_value", 85, "25 05 01 00 00 00 00"), kOutOfRange);
    EXPECT_EQ(write("integer_value", 85, "35 05 00 80 00 00 00"), kOutOfRange);
    EXPECT_EQ(write("date_value", 85, "A4 7C 0F 01 FF"), kOutOfRange) << "month 15";
    EXPECT_EQ(write("date_value", 85, "A4 7C 01 23 FF"), kOutOfRange) << "day 35";
    EXPECT_EQ(write("date_value", 85, "A4 7C 01 01 00"), kOutOfRange) << "weekday 0";
    EXPECT_EQ(write("time_value", 85, "B4 18 00 00 00"), kOutOfRange);
    EXPECT_EQ(write("time_value", 85, "B4 00 00 00 64"), kOutOfRange);
    EXPECT_EQ(write("lighting_output", 85, "44 42 CA 00 00"), kOutOfRange) << "101 percent";
    EXPECT_EQ(write("schedule", 88, "21 11"), kOutOfRange) << "Priority_For_Writing";
    EXPECT_EQ(write("schedule", 88, "21 00"), kOutOfRange);
    EXPECT_EQ(write("schedule", 88, "21 08"), kAck);
}

TEST_F(WriteProperty, InvalidDataTypes) {
    for (char const* value : {"", "43 41 AC 00", "44 41 AC 00 00 44 41 AC 00 00", "00", "1C 00 80 00 01",
                              "0E 44 41 AC 00 00 0F", "D1 00", "21 14", "55 08 3F F4 00 00 00 00 00 00"}) {
        EXPECT_EQ(write("analog_value", 85, value), kInvalidDataType) << value;
    }
    EXPECT_EQ(write("analog_value", 28, "70"), kInvalidDataType) << "a text without its character set";
    EXPECT_EQ(write("bit_string_value", 85, "81 01"), kInvalidDataType) << "unused bits of no octet";
    EXPECT_EQ(write("bit_string_value", 85, "82 08 00"), kInvalidDataType);
    EXPECT_EQ(write("bit_string_value", 85, "80"), kInvalidDataType);
    EXPECT_EQ(write("datetime_value", 85, "A4 7C 03 0F FF"), kInvalidDataType) << "no time";
    EXPECT_EQ(write("date_value", 85, "A3 7C 03 0F"), kInvalidDataType);
    EXPECT_EQ(write("positive_integer_value", 85, "20"), kInvalidDataType);
    EXPECT_EQ(write("schedule", 174, "01 00"), kInvalidDataType) << "Null with contents";
}

TEST_F(WriteProperty, MeasuredValuesAreWrittenOnlyOutOfService) {
    for (char const* type : {"analog_input", "loop", "pulse_converter"}) {
        EXPECT_EQ(write(type, 85, "44 41 AC 00 00"), kDenied) << type;
        EXPECT_EQ(write(type, 81, "11"), kAck) << type;
        EXPECT_EQ(write(type, 85, "44 41 AC 00 00"), kAck) << type;
        EXPECT_EQ(read(type, 85), "44 41 AC 00 00") << type;
    }
    EXPECT_EQ(write("accumulator", 85, "21 05"), kDenied);
    EXPECT_EQ(write("schedule", 85, "21 05"), kDenied);
}

TEST_F(WriteProperty, OutOfServiceHoldsTheValueUntilItIsBack) {
    wait(std::chrono::seconds(2));
    EXPECT_EQ(write("analog_input", 81, "11"), kAck);
    wait(std::chrono::seconds(3));
    EXPECT_EQ(read("analog_input", 85), "44 40 00 00 00") << "held at 2";
    EXPECT_EQ(read("analog_input", 111), "82 04 10") << "Status_Flags say so";
    EXPECT_EQ(write("analog_input", 85, "44 41 AC 00 00"), kAck);
    EXPECT_EQ(write("analog_input", 81, "10"), kAck);
    EXPECT_EQ(read("analog_input", 85), "44 40 A0 00 00") << "5 is measured";
    EXPECT_EQ(read("analog_input", 111), "82 04 00");
}

TEST_F(WriteProperty, ReliabilityReachesStatusFlags) {
    EXPECT_EQ(write("analog_input", 103, "91 04"), kDenied);
    EXPECT_EQ(write("analog_input", 81, "11"), kAck);
    EXPECT_EQ(write("analog_input", 103, "91 04"), kAck);
    EXPECT_EQ(read("analog_input", 111), "82 04 50");
    EXPECT_EQ(write("analog_input", 103, "91 0B"), kOutOfRange) << "a number without a meaning";
}

TEST_F(WriteProperty, SettingsOfALoop) {
    EXPECT_EQ(write("loop", 93, "44 40 00 00 00"), kAck);
    EXPECT_EQ(write("loop", 49, "44 40 40 00 00"), kAck);
    EXPECT_EQ(write("loop", 26, "44 40 80 00 00"), kAck);
    EXPECT_EQ(write("loop", 108, "44 41 A8 00 00"), kAck);
    EXPECT_EQ(read("loop", 93), "44 40 00 00 00");
    EXPECT_EQ(read("loop", 49), "44 40 40 00 00");
    EXPECT_EQ(read("loop", 26), "44 40 80 00 00");
    EXPECT_EQ(read("loop", 108), "44 41 A8 00 00");
}

TEST_F(WriteProperty, ListsAndArrays) {
    EXPECT_EQ(write("multi_state_value", 7, "21 02 21 03"), kAck) << "Alarm_Values";
    EXPECT_EQ(read("multi_state_value", 7), "21 02 21 03");
    EXPECT_EQ(write("multi_state_value", 7, ""), kAck);
    EXPECT_EQ(read("multi_state_value", 7), "");
    EXPECT_EQ(writeElement("multi_state_value", 7, 1, "21 02"), "50 01 0F 91 02 91 32") << "a list";
    EXPECT_EQ(writeElement("multi_state_value", 110, 2, "72 00 78"), kAck);
    EXPECT_EQ(read("multi_state_value", 110), "72 00 61 72 00 78 72 00 63");
    EXPECT_EQ(write("multi_state_value", 110, "72 00 61 72 00 78"), kOutOfRange) << "two of three";
    EXPECT_EQ(writeElement("multi_state_value", 110, 2, "72 00 61 72 00 78"), kInvalidDataType);
}

TEST_F(WriteProperty, TheDevicesOwnObject) {
    EXPECT_EQ(answer("00 04 01 0F 0C 02 3F FF FF 19 1C 3E 73 00 6F 6E 3F"), kAck) << "Description";
    EXPECT_EQ(answer("00 04 01 0C 0C 02 00 00 64 19 1C"), "30 01 0C 0C 02 00 00 64 19 1C 3E 73 00 6F 6E 3F");
    EXPECT_EQ(answer("00 04 01 0F 0C 02 00 00 64 19 3E 3E 21 32 3F"), kDenied) << "Max_APDU_Length";
}

TEST_F(WriteProperty, DeviceFilesCloseAndOpenProperties) {
    makeWith(R"(
        analog_value{instance = 1, read_only = true},
        analog_input{instance = 1, writable = {"present_value", "units"}},
        binary_value{instance = 1, read_only = {"present_value"}},
    )");
    EXPECT_EQ(write("analog_value", 85, "44 41 AC 00 00"), kDenied);
    EXPECT_EQ(write("analog_value", 28, "73 00 6F 6E"), kDenied);
    EXPECT_EQ(write("analog_input", 85, "44 41 AC 00 00"), kAck);
    EXPECT_EQ(write("analog_input", 117, "91 40"), kAck);
    EXPECT_EQ(read("analog_input", 117), "91 40");
    EXPECT_EQ(write("binary_value", 85, "91 01"), kDenied);
    EXPECT_EQ(write("binary_value", 28, "73 00 6F 6E"), kAck);
}

TEST_F(WriteProperty, AWriteToEverybodyHasNoEffect) {
    simulator::Datagram const datagram{
        kClient, test::Hex("81 0B 00 18 01 04 02 75 01 0F 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F")};
    EXPECT_TRUE(station->receive(datagram, now).empty());
    EXPECT_EQ(read("analog_value", 85), "44 41 A0 00 00");
}

TEST_F(WriteProperty, EveryWriteIsTold) {
    std::vector<std::string> lines;
    station->onWrite([&lines](std::string const& line) { lines.push_back(line); });
    write("analog_value", 85, "44 41 AC 00 00", 8);
    write("analog_input", 85, "00");
    writeElement("schedule", 123, 2, "0E B4 08 1E 00 00 91 01 B4 FF 00 00 00 10 0F");
    write("analog_value", 28, "75 05 00 0A 22 6F 6E");
    write("bit_string_value", 85, "82 05 A0");
    write("datetime_value", 85, "A4 7C 03 0F FF B4 08 1E 00 05");
    write("analog_value", 85, "");
    write("analog_value", 85, "43 41 AC 00 19 0A");
    write("schedule", 200, "C4 02 00 00 64 31 FE 61 0A");
    answer("02 75 01 0F 0C 00 80 00 01");
    answer("02 75 01 0F 0C 32 00 00 01 19 55 3E 00 3F");
    EXPECT_EQ(lines,
              (test::Texts{
                  "write analog_value 1 present_value = Real 21.5, priority 8: done",
                  "write analog_input 1 present_value = Null: refused, write-access-denied",
                  "write schedule 1 weekly_schedule[2] = {0 Time 08:30:00.00 Enumerated 1 Time *:00:00.00 "
                  "Boolean false }0: refused, value-out-of-range",
                  "write analog_value 1 description = CharacterString \".\"on\": done",
                  "write bit_string_value 1 present_value = BitString 101: done",
                  "write datetime_value 1 present_value = Date 2024-03-15 Time 08:30:00.05: done",
                  "write analog_value 1 present_value = nothing: refused, invalid-data-type",
                  "write analog_value 1 present_value = Real with contents 41AC00 [1] 0A: refused, "
                  "invalid-data-type",
                  "write schedule 1 200 = ObjectIdentifier device 100 Signed -2 OctetString 0A: refused, "
                  "unknown-property",
                  "write: rejected, missing-required-parameter",
                  "write object type 200 instance 1 present_value = Null: refused, unknown-object",
              }));
}
