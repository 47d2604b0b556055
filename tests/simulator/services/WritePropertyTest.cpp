#include "WriteFixture.h"

class WriteProperty : public test::WriteFixture {
protected:
    void SetUp() override {
        MakeWith(R"(
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
    EXPECT_EQ(Answer("00 04 07 0F 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F 49 08"), "20 07 0F");
    EXPECT_EQ(Answer("00 04 08 0C 0C 00 80 00 01 19 55"),
              "30 08 0C 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F");
}

TEST_F(WriteProperty, Errors) {
    EXPECT_EQ(Answer("00 04 01 0F 0C 00 80 00 02 19 55 3E 44 41 AC 00 00 3F"), "50 01 0F 91 01 91 1F")
        << "unknown object";
    EXPECT_EQ(Write("analog_value", 123, "44 41 AC 00 00"), "50 01 0F 91 02 91 20") << "unknown property";
    EXPECT_EQ(Write("analog_value", 77, "73 00 6F 6E"), Denied) << "Object_Name";
    EXPECT_EQ(Write("analog_value", 111, "82 04 00"), Denied) << "Status_Flags";
    EXPECT_EQ(Write("binary_output", 87, "91 01", 0, 8), Denied) << "Priority_Array";
    EXPECT_EQ(Write("analog_value", 85, "91 01"), InvalidDataType);
    EXPECT_EQ(Write("analog_value", 85, "44 42 20 00 00"), OutOfRange) << "above Max_Pres_Value";
    EXPECT_EQ(Write("analog_value", 85, "44 40 80 00 00"), OutOfRange) << "below Min_Pres_Value";
    EXPECT_EQ(WriteElement("analog_value", 85, 1, "44 41 AC 00 00"), "50 01 0F 91 02 91 32") << "no array";
    EXPECT_EQ(WriteElement("schedule", 123, 8, "0E 0F"), "50 01 0F 91 02 91 2A") << "no such element";
    EXPECT_EQ(WriteElement("schedule", 123, 0, "21 05"), Denied) << "the number of elements";
    EXPECT_EQ(Write("analog_value", 28, "73 04 6F 6E"), "50 01 0F 91 02 91 29") << "UCS-2";
    EXPECT_EQ(Read("analog_value", 85), "44 41 A0 00 00") << "none of them had an effect";
}

TEST_F(WriteProperty, Rejects) {
    std::string const object = "02 75 01 0F 0C 00 80 00 01 ";
    EXPECT_EQ(Answer("02 75 01 0F"), "60 01 05") << "no parameters";
    EXPECT_EQ(Answer(object), "60 01 05") << "no property";
    EXPECT_EQ(Answer(object + "19 55"), "60 01 05") << "no value";
    EXPECT_EQ(Answer(object + "19 55 49 08"), "60 01 04") << "a priority in place of the value";
    EXPECT_EQ(Answer(object + "19 55 3E 44 41 AC 00 00"), "60 01 05") << "a value without end";
    EXPECT_EQ(Answer(object + "19 55 3E 44 41 AC 00 00 4F"), "60 01 04") << "another bracket's end";
    EXPECT_EQ(Answer(object + "19 55 3E 44 41 AC 3F"), "60 01 04") << "a value cut off";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 49 00"), "60 01 06") << "priority 0";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 49 11"), "60 01 06") << "priority 17";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 4A 01 08"), "60 01 06") << "priority 264";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 48"), "60 01 03") << "priority of no octet";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 59 08"), "60 01 07") << "another parameter";
    EXPECT_EQ(Answer(object + "19 55 3E 00 3F 49 08 00"), "60 01 07") << "one octet more";
    EXPECT_EQ(Answer("02 75 01 0F C4 00 80 00 01 19 55 3E 00 3F"), "60 01 04") << "application tag";
    EXPECT_EQ(Answer(object + "19 55 29 01 29 01 3E 00 3F"), "60 01 04") << "two indices";
}

TEST_F(WriteProperty, CutAnywhereItIsRejectedAndHasNoEffect) {
    test::Octets const whole =
        test::Hex("02 75 01 0F 0C 04 40 00 01 19 7B 29 02 3E 0E B4 08 00 00 00 44 41 A0 00 00 0F 3F 49 08");
    for (std::size_t length = 4; length < whole.size(); ++length) {
        bool const isComplete = length == whole.size() - 2;  // the priority is optional
        std::string const text =
            Answer(test::ToHex(test::Octets(whole.begin(), whole.begin() + static_cast<int>(length))));
        EXPECT_EQ(text.substr(0, 5), isComplete ? "20 01" : "60 01") << length;
        EXPECT_EQ(Read("schedule", 123, 2), isComplete ? "0E B4 08 00 00 00 44 41 A0 00 00 0F" : "0E 0F");
        WriteElement("schedule", 123, 2, "0E 0F");
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
        EXPECT_EQ(Write(row.type, 85, row.value), Ack) << row.type;
        EXPECT_EQ(Read(row.type, 85), row.value) << row.type;
    }
}

TEST_F(WriteProperty, NumbersComeBackInAsFewOctetsAsHoldThem) {
    EXPECT_EQ(Write("positive_integer_value", 85, "24 00 00 00 07"), Ack);
    EXPECT_EQ(Read("positive_integer_value", 85), "21 07");
    EXPECT_EQ(Write("integer_value", 85, "34 FF FF FF FE"), Ack);
    EXPECT_EQ(Read("integer_value", 85), "31 FE");
}

TEST_F(WriteProperty, ValuesOutOfRange) {
    EXPECT_EQ(Write("binary_value", 85, "91 02"), OutOfRange);
    EXPECT_EQ(Write("binary_output", 85, "91 02", 8), OutOfRange);
    EXPECT_EQ(Write("multi_state_value", 85, "21 00"), OutOfRange);
    EXPECT_EQ(Write("multi_state_value", 85, "21 04"), OutOfRange);
    EXPECT_EQ(Write("analog_value", 85, "44 7F C0 00 00"), OutOfRange) << "not a number";
    EXPECT_EQ(Write("analog_value", 45, "44 7F 80 00 00"), OutOfRange) << "infinite";
    EXPECT_EQ(Write("positive_integer_value", 85, "25 05 01 00 00 00 00"), OutOfRange);
    EXPECT_EQ(Write("integer_value", 85, "35 05 00 80 00 00 00"), OutOfRange);
    EXPECT_EQ(Write("date_value", 85, "A4 7C 0F 01 FF"), OutOfRange) << "month 15";
    EXPECT_EQ(Write("date_value", 85, "A4 7C 01 23 FF"), OutOfRange) << "day 35";
    EXPECT_EQ(Write("date_value", 85, "A4 7C 01 01 00"), OutOfRange) << "weekday 0";
    EXPECT_EQ(Write("time_value", 85, "B4 18 00 00 00"), OutOfRange);
    EXPECT_EQ(Write("time_value", 85, "B4 00 00 00 64"), OutOfRange);
    EXPECT_EQ(Write("lighting_output", 85, "44 42 CA 00 00"), OutOfRange) << "101 percent";
    EXPECT_EQ(Write("schedule", 88, "21 11"), OutOfRange) << "Priority_For_Writing";
    EXPECT_EQ(Write("schedule", 88, "21 00"), OutOfRange);
    EXPECT_EQ(Write("schedule", 88, "21 08"), Ack);
}

TEST_F(WriteProperty, InvalidDataTypes) {
    for (char const* value : {"", "43 41 AC 00", "44 41 AC 00 00 44 41 AC 00 00", "00", "1C 00 80 00 01",
                              "0E 44 41 AC 00 00 0F", "D1 00", "21 14", "55 08 3F F4 00 00 00 00 00 00"}) {
        EXPECT_EQ(Write("analog_value", 85, value), InvalidDataType) << value;
    }
    EXPECT_EQ(Write("analog_value", 28, "70"), InvalidDataType) << "a text without its character set";
    EXPECT_EQ(Write("bit_string_value", 85, "81 01"), InvalidDataType) << "unused bits of no octet";
    EXPECT_EQ(Write("bit_string_value", 85, "82 08 00"), InvalidDataType);
    EXPECT_EQ(Write("bit_string_value", 85, "80"), InvalidDataType);
    EXPECT_EQ(Write("datetime_value", 85, "A4 7C 03 0F FF"), InvalidDataType) << "no time";
    EXPECT_EQ(Write("date_value", 85, "A3 7C 03 0F"), InvalidDataType);
    EXPECT_EQ(Write("positive_integer_value", 85, "20"), InvalidDataType);
    EXPECT_EQ(Write("schedule", 174, "01 00"), InvalidDataType) << "Null with contents";
}

TEST_F(WriteProperty, MeasuredValuesAreWrittenOnlyOutOfService) {
    for (char const* type : {"analog_input", "loop", "pulse_converter"}) {
        EXPECT_EQ(Write(type, 85, "44 41 AC 00 00"), Denied) << type;
        EXPECT_EQ(Write(type, 81, "11"), Ack) << type;
        EXPECT_EQ(Write(type, 85, "44 41 AC 00 00"), Ack) << type;
        EXPECT_EQ(Read(type, 85), "44 41 AC 00 00") << type;
    }
    EXPECT_EQ(Write("accumulator", 85, "21 05"), Denied);
    EXPECT_EQ(Write("schedule", 85, "21 05"), Denied);
}

TEST_F(WriteProperty, OutOfServiceHoldsTheValueUntilItIsBack) {
    Wait(std::chrono::seconds(2));
    EXPECT_EQ(Write("analog_input", 81, "11"), Ack);
    Wait(std::chrono::seconds(3));
    EXPECT_EQ(Read("analog_input", 85), "44 40 00 00 00") << "held at 2";
    EXPECT_EQ(Read("analog_input", 111), "82 04 10") << "Status_Flags say so";
    EXPECT_EQ(Write("analog_input", 85, "44 41 AC 00 00"), Ack);
    EXPECT_EQ(Write("analog_input", 81, "10"), Ack);
    EXPECT_EQ(Read("analog_input", 85), "44 40 A0 00 00") << "5 is measured";
    EXPECT_EQ(Read("analog_input", 111), "82 04 00");
}

TEST_F(WriteProperty, ReliabilityReachesStatusFlags) {
    EXPECT_EQ(Write("analog_input", 103, "91 04"), Denied);
    EXPECT_EQ(Write("analog_input", 81, "11"), Ack);
    EXPECT_EQ(Write("analog_input", 103, "91 04"), Ack);
    EXPECT_EQ(Read("analog_input", 111), "82 04 50");
    EXPECT_EQ(Write("analog_input", 103, "91 0B"), OutOfRange) << "a number without a meaning";
}

TEST_F(WriteProperty, SettingsOfALoop) {
    EXPECT_EQ(Write("loop", 93, "44 40 00 00 00"), Ack);
    EXPECT_EQ(Write("loop", 49, "44 40 40 00 00"), Ack);
    EXPECT_EQ(Write("loop", 26, "44 40 80 00 00"), Ack);
    EXPECT_EQ(Write("loop", 108, "44 41 A8 00 00"), Ack);
    EXPECT_EQ(Read("loop", 93), "44 40 00 00 00");
    EXPECT_EQ(Read("loop", 49), "44 40 40 00 00");
    EXPECT_EQ(Read("loop", 26), "44 40 80 00 00");
    EXPECT_EQ(Read("loop", 108), "44 41 A8 00 00");
}

TEST_F(WriteProperty, ListsAndArrays) {
    EXPECT_EQ(Write("multi_state_value", 7, "21 02 21 03"), Ack) << "Alarm_Values";
    EXPECT_EQ(Read("multi_state_value", 7), "21 02 21 03");
    EXPECT_EQ(Write("multi_state_value", 7, ""), Ack);
    EXPECT_EQ(Read("multi_state_value", 7), "");
    EXPECT_EQ(WriteElement("multi_state_value", 7, 1, "21 02"), "50 01 0F 91 02 91 32") << "a list";
    EXPECT_EQ(WriteElement("multi_state_value", 110, 2, "72 00 78"), Ack);
    EXPECT_EQ(Read("multi_state_value", 110), "72 00 61 72 00 78 72 00 63");
    EXPECT_EQ(Write("multi_state_value", 110, "72 00 61 72 00 78"), OutOfRange) << "two of three";
    EXPECT_EQ(WriteElement("multi_state_value", 110, 2, "72 00 61 72 00 78"), InvalidDataType);
}

TEST_F(WriteProperty, TheDevicesOwnObject) {
    EXPECT_EQ(Answer("00 04 01 0F 0C 02 3F FF FF 19 1C 3E 73 00 6F 6E 3F"), Ack) << "Description";
    EXPECT_EQ(Answer("00 04 01 0C 0C 02 00 00 64 19 1C"), "30 01 0C 0C 02 00 00 64 19 1C 3E 73 00 6F 6E 3F");
    EXPECT_EQ(Answer("00 04 01 0F 0C 02 00 00 64 19 3E 3E 21 32 3F"), Denied) << "Max_APDU_Length";
}

TEST_F(WriteProperty, DeviceFilesCloseAndOpenProperties) {
    MakeWith(R"(
        analog_value{instance = 1, read_only = true},
        analog_input{instance = 1, writable = {"present_value", "units"}},
        binary_value{instance = 1, read_only = {"present_value"}},
    )");
    EXPECT_EQ(Write("analog_value", 85, "44 41 AC 00 00"), Denied);
    EXPECT_EQ(Write("analog_value", 28, "73 00 6F 6E"), Denied);
    EXPECT_EQ(Write("analog_input", 85, "44 41 AC 00 00"), Ack);
    EXPECT_EQ(Write("analog_input", 117, "91 40"), Ack);
    EXPECT_EQ(Read("analog_input", 117), "91 40");
    EXPECT_EQ(Write("binary_value", 85, "91 01"), Denied);
    EXPECT_EQ(Write("binary_value", 28, "73 00 6F 6E"), Ack);
}

TEST_F(WriteProperty, AWriteToEverybodyHasNoEffect) {
    simulator::Datagram const datagram{
        Client, test::Hex("81 0B 00 18 01 04 02 75 01 0F 0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F")};
    EXPECT_TRUE(station->Receive(datagram, now).empty());
    EXPECT_EQ(Read("analog_value", 85), "44 41 A0 00 00");
}

TEST_F(WriteProperty, EveryWriteIsReported) {
    std::vector<std::string> lines;
    station->OnWrite([&lines](std::string const& line) { lines.push_back(line); });
    Write("analog_value", 85, "44 41 AC 00 00", 8);
    Write("analog_input", 85, "00");
    WriteElement("schedule", 123, 2, "0E B4 08 1E 00 00 91 01 B4 FF 00 00 00 10 0F");
    Write("analog_value", 28, "75 05 00 0A 22 6F 6E");
    Write("bit_string_value", 85, "82 05 A0");
    Write("datetime_value", 85, "A4 7C 03 0F FF B4 08 1E 00 05");
    Write("analog_value", 85, "");
    Write("analog_value", 85, "43 41 AC 00 19 0A");
    Write("schedule", 200, "C4 02 00 00 64 31 FE 61 0A");
    Answer("02 75 01 0F 0C 00 80 00 01");
    Answer("02 75 01 0F 0C 32 00 00 01 19 55 3E 00 3F");
    EXPECT_EQ(lines,
              (test::Texts{
                  "write analog_value 1 present_value = Real 21.5, priority 8: done",
                  "write analog_input 1 present_value = Null: refused, write-access-denied",
                  "write schedule 1 weekly_schedule[2] = {0 Time 08:30:00.00 Enumerated 1 Time *:00:00.00 "
                  "Boolean false }0: refused, value-out-of-range",
                  "write analog_value 1 description = CharacterString \"\\n\"on\": done",
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
