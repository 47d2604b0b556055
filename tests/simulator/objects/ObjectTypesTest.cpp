#include <set>

#include "Content.h"
#include "StationFixture.h"

// The objects of a device file without values, for every type: the value of each property, in the form of the
// standard.
class ObjectTypes : public test::StationFixture {
protected:
    // The value of a property from a ReadPropertyMultiple, in hexadecimal.
    std::string Read(std::string const& type, unsigned property, std::string const& values = "") {
        MakeWith(type + "{instance = 1, " + values + "}");
        unsigned const code = simulator::ObjectTypeOfName(type)->code;
        simulator::TagWriter parameters;
        parameters.Context(0, simulator::content::ObjectIdentifier({static_cast<std::uint16_t>(code), 1}));
        parameters.Context(1, simulator::content::UnsignedNumber(property));
        std::string const text = Answer("02 75 01 0C " + test::ToHex(parameters.Take()));
        if (text.substr(0, 2) != "30") {
            return text;
        }
        std::size_t const start = text.find(" 3E ") + 4;
        std::size_t const end = text.size() - 3;
        return start < end ? text.substr(start, end - start) : "";
    }
};

namespace {

struct Row {
    char const* type;
    unsigned property;
    char const* value;
};

// The properties that a client can read, with the defaults of the simulator.
constexpr Row Rows[] = {
    {"accumulator", 85, "21 00"},
    {"accumulator", 187, "0C 3F 80 00 00"},
    {"accumulator", 59, "21 00"},
    {"accumulator", 45, "22 03 E8"},
    {"accumulator", 117, "91 5F"},
    {"analog_input", 85, "44 00 00 00 00"},
    {"analog_input", 106, "44 3D CC CC CD"},
    {"analog_input", 45, "44 42 C8 00 00"},
    {"analog_input", 59, "44 00 00 00 00"},
    {"analog_input", 25, "44 3F 80 00 00"},
    {"analog_input", 117, "91 5F"},
    {"analog_input", 111, "82 04 00"},
    {"analog_input", 81, "10"},
    {"analog_input", 103, "91 00"},
    {"analog_input", 28, "71 00"},
    {"analog_input", 36, "91 00"},
    {"analog_output", 85, "44 00 00 00 00"},
    {"analog_output", 117, "91 62"},
    {"analog_output", 87, "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"},
    {"analog_value", 85, "44 00 00 00 00"},
    {"averaging", 136, "44 00 00 00 00"},
    {"averaging", 150, "A4 7C 01 01 01 B4 00 00 00 00"},
    {"averaging", 135, "44 00 00 00 00"},
    {"averaging", 149, "A4 7C 01 01 01 B4 00 00 00 00"},
    {"averaging", 125, "44 00 00 00 00"},
    {"averaging", 151, "44 00 00 00 00"},
    {"averaging", 147, "22 03 84"},
    {"averaging", 148, "21 0F"},
    {"averaging", 78, "0C 00 00 00 01 19 55"},
    {"averaging", 111, "50 01 0C 91 02 91 20"},
    {"binary_input", 85, "91 00"},
    {"binary_input", 84, "91 00"},
    {"binary_output", 85, "91 00"},
    {"binary_output", 84, "91 00"},
    {"binary_output", 40, "91 00"},
    {"binary_value", 85, "91 00"},
    {"binary_value", 84, "50 01 0C 91 02 91 20"},
    {"bit_string_value", 85, "82 00 00"},
    {"date_value", 85, "A4 46 01 01 04"},
    {"datetime_value", 85, "A4 46 01 01 04 B4 00 00 00 00"},
    {"datetime_value", 344, "10"},
    {"integer_value", 85, "31 00"},
    {"integer_value", 45, "31 64"},
    {"integer_value", 59, "31 00"},
    {"integer_value", 25, "21 01"},
    {"integer_value", 106, "31 01"},
    {"large_analog_value", 85, "55 08 00 00 00 00 00 00 00 00"},
    {"large_analog_value", 45, "55 08 40 59 00 00 00 00 00 00"},
    {"large_analog_value", 25, "55 08 3F F0 00 00 00 00 00 00"},
    {"lighting_output", 85, "44 00 00 00 00"},
    {"lighting_output", 164, "44 00 00 00 00"},
    {"lighting_output", 373, "10"},
    {"lighting_output", 374, "21 64"},
    {"lighting_output", 379, "44 00 00 00 00"},
    {"lighting_output", 384, "44 00 00 00 00"},
    {"lighting_output", 40, "44 00 00 00 00"},
    {"lighting_output", 380, "09 00"},
    {"loop", 85, "44 00 00 00 00"},
    {"loop", 108, "44 00 00 00 00"},
    {"loop", 93, "44 3F 80 00 00"},
    {"loop", 49, "44 00 00 00 00"},
    {"loop", 26, "44 00 00 00 00"},
    {"loop", 14, "44 00 00 00 00"},
    {"loop", 25, "44 3F 80 00 00"},
    {"loop", 109, ""},
    {"multi_state_input", 85, "21 01"},
    {"multi_state_output", 85, "21 01"},
    {"multi_state_output", 40, "21 01"},
    {"multi_state_value", 85, "21 01"},
    {"octet_string_value", 85, "60"},
    {"positive_integer_value", 85, "21 00"},
    {"pulse_converter", 85, "44 00 00 00 00"},
    {"pulse_converter", 188, "44 3F 80 00 00"},
    {"pulse_converter", 176, "44 00 00 00 00"},
    {"pulse_converter", 179, "A4 7C 01 01 01 B4 00 00 00 00"},
    {"pulse_converter", 178, "21 00"},
    {"schedule", 85, "44 00 00 00 00"},
    {"schedule", 123, "0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"},
    {"schedule", 38, ""},
    {"schedule", 32, "A4 FF FF FF FF A4 FF FF FF FF"},
    {"schedule", 36, "50 01 0C 91 02 91 20"},
    {"time_value", 85, "B4 00 00 00 00"},
};

}  // namespace

TEST_F(ObjectTypes, DefaultsOfEveryType) {
    for (Row const& row : Rows) {
        EXPECT_EQ(Read(row.type, row.property), row.value) << row.type << ' ' << row.property;
    }
}

TEST_F(ObjectTypes, ThereAre23AndTheirRowsAreAllDifferent) {
    EXPECT_EQ(simulator::AllObjectTypes().size(), 23u);
    for (simulator::ObjectType const& type : simulator::AllObjectTypes()) {
        std::set<simulator::PropertyId> seen;
        for (auto const& group : type.groups) {
            for (auto const& row : group) {
                EXPECT_TRUE(seen.insert(row.id).second) << type.name << ' ' << simulator::NameOf(row.id);
            }
        }
    }
}

TEST_F(ObjectTypes, ValuesGiven) {
    EXPECT_EQ(Read("accumulator", 187, "scale = {integer_scale = -2}"), "19 FE");
    EXPECT_EQ(Read("accumulator", 185, "prescale = {multiplier = 300, modulo_divide = 1}"), "0A 01 2C 19 01");
    EXPECT_EQ(Read("accumulator", 85, "present_value = 4294967295"), "24 FF FF FF FF");
    EXPECT_EQ(Read("binary_input", 85, "present_value = 'active'"), "91 01");
    EXPECT_EQ(Read("binary_input", 85, "present_value = true"), "91 01");
    EXPECT_EQ(Read("binary_input", 84, "polarity = 'reverse'"), "91 01");
    EXPECT_EQ(Read("bit_string_value", 85, "present_value = '101'"), "82 05 A0");
    EXPECT_EQ(Read("date_value", 85, "present_value = '*-12-25'"), "A4 FF 0C 19 FF");
    EXPECT_EQ(Read("datetime_value", 85, "present_value = '*'"), "A4 FF FF FF FF B4 FF FF FF FF");
    EXPECT_EQ(Read("integer_value", 85, "present_value = -300"), "32 FE D4");
    EXPECT_EQ(Read("integer_value", 85, "present_value = 25.0"), "31 19");
    EXPECT_EQ(Read("large_analog_value", 85, "present_value = 1.25"), "55 08 3F F4 00 00 00 00 00 00");
    EXPECT_EQ(Read("analog_input", 85, "present_value = 1/0"), "44 7F 80 00 00");
    EXPECT_EQ(Read("analog_input", 117, "units = 'degrees-celsius'"), "91 3E");
    EXPECT_EQ(Read("analog_input", 117, "units = 'megawatt-hours'"), "91 92");
    EXPECT_EQ(Read("analog_input", 117, "units = 200"), "91 C8");
    EXPECT_EQ(Read("analog_input", 130, "event_time_stamps = {'*', 5}"),
              "2E A4 FF FF FF FF B4 FF FF FF FF 2F 19 05");
    EXPECT_EQ(Read("octet_string_value", 85, "present_value = '0A14C0FFEE'"), "65 05 0A 14 C0 FF EE");
    EXPECT_EQ(Read("time_value", 85, "present_value = '23:59:58.97'"), "B4 17 3B 3A 61");
    EXPECT_EQ(Read("lighting_output", 380,
                   "lighting_command = {operation = 1, target_level = 50, fade_time = 500}"),
              "09 01 1C 42 48 00 00 4A 01 F4");
    EXPECT_EQ(Read("loop", 109, "setpoint_reference = {'analog_value', 1, 'present_value'}"),
              "0E 0C 00 80 00 01 19 55 0F");
    EXPECT_EQ(Read("schedule", 85, "present_value = enumerated(1)"), "91 01");
    EXPECT_EQ(Read("averaging", 111, "status_flags = {fault = true}"), "82 04 40");
}

TEST_F(ObjectTypes, AGivenValueIsCommandedAtTheLowestPriority) {
    EXPECT_EQ(Read("analog_output", 87, "present_value = 1"),
              "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 44 3F 80 00 00");
    EXPECT_EQ(Read("analog_value", 87, "present_value = 1"), "50 01 0C 91 02 91 20");
    EXPECT_EQ(Read("date_value", 87, "relinquish_default = '2024-01-01'"),
              "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
    EXPECT_EQ(Read("datetime_value", 87, "relinquish_default = '*', present_value = clock()"),
              "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 1E A4 46 01 01 04 B4 00 00 00 00 1F");
}

TEST_F(ObjectTypes, MovingValuesTakeTheDatatypeOfTheirProperty) {
    std::string const moving = "present_value = ramp{from = -7, to = 9, period = 10}";
    EXPECT_EQ(Read("analog_input", 85, moving), "44 C0 E0 00 00");
    EXPECT_EQ(Read("large_analog_value", 85, moving), "55 08 C0 1C 00 00 00 00 00 00");
    EXPECT_EQ(Read("integer_value", 85, moving), "31 F9");
    EXPECT_EQ(Read("positive_integer_value", 85, moving), "21 00") << "below its range";
    EXPECT_EQ(Read("positive_integer_value", 85, "present_value = counter{start = 1e12}"), "24 FF FF FF FF");
    EXPECT_EQ(Read("binary_value", 85, "present_value = steps{values = {1, 0}}"), "91 01");
    EXPECT_EQ(Read("analog_input", 81, "out_of_service = steps{values = {1, 0}}"), "11");
    EXPECT_EQ(Read("schedule", 85, moving), "44 C0 E0 00 00");
}

TEST_F(ObjectTypes, WeeklyScheduleOfEveryDatatype) {
    EXPECT_EQ(Read("schedule", 123, R"(weekly_schedule = {
            monday = {{"08:00", null()}, {"09:00", boolean(true)}, {"10:00", unsigned(300)}},
            tuesday = {{"08:00", signed(-2)}, {"09:00", real(21.5)}, {"10:00", double(1)}},
            wednesday = {{"08:00", octet_string("0A")}, {"09:00", character_string("on")}},
            thursday = {{"08:00", bit_string("101")}, {"09:00", enumerated(2)}},
            friday = {{"08:00", date("2024-03-15")}, {"09:00", time("12:30")}},
            sunday = {{"08:00", object_identifier("binary_value", 7)}, {"09:00", 1}, {"10:00", false}}})"),
              "0E B4 08 00 00 00 00 B4 09 00 00 00 11 B4 0A 00 00 00 22 01 2C 0F "
              "0E B4 08 00 00 00 31 FE B4 09 00 00 00 44 41 AC 00 00 B4 0A 00 00 00 55 08 3F F0 00 00 00 00 "
              "00 00 0F "
              "0E B4 08 00 00 00 61 0A B4 09 00 00 00 73 00 6F 6E 0F "
              "0E B4 08 00 00 00 82 05 A0 B4 09 00 00 00 91 02 0F "
              "0E B4 08 00 00 00 A4 7C 03 0F 05 B4 09 00 00 00 B4 0C 1E 00 00 0F "
              "0E 0F "
              "0E B4 08 00 00 00 C4 01 40 00 07 B4 09 00 00 00 44 3F 80 00 00 B4 0A 00 00 00 10 0F");
}

TEST_F(ObjectTypes, ExceptionScheduleOfEveryPeriod) {
    EXPECT_EQ(Read("schedule", 38,
                   "exception_schedule = {{date = '2024-03-15', entries = {{'08:00', unsigned(1)}}}}"),
              "0E 0C 7C 03 0F 05 0F 2E B4 08 00 00 00 21 01 2F 39 10");
    EXPECT_EQ(Read("schedule", 38, "exception_schedule = {{from = '2024-03-15', priority = 5}}"),
              "0E 1E A4 7C 03 0F 05 A4 FF FF FF FF 1F 0F 2E 2F 39 05");
    EXPECT_EQ(
        Read("schedule", 38, "exception_schedule = {{week_n_day = {month = 12, day = 2}, priority = 1}}"),
        "0E 2B 0C FF 02 0F 2E 2F 39 01");
    EXPECT_EQ(Read("schedule", 38, "exception_schedule = {{calendar = 7, priority = 10}, {date = '*-*-*'}}"),
              "1C 01 80 00 07 2E 2F 39 0A 0E 0C FF FF FF FF 0F 2E 2F 39 10");
}

TEST_F(ObjectTypes, ClocksShowTheWallClock) {
    MakeWith("datetime_value{instance = 1}");
    now.local = std::chrono::hours(24 * 19797) + std::chrono::milliseconds(45'296'780);
    EXPECT_EQ(Answer("02 75 01 0C 0C 0B 00 00 01 19 55"),
              "30 01 0C 0C 0B 00 00 01 19 55 3E A4 7C 03 0F 05 B4 0C 22 38 4E 3F");
    EXPECT_EQ(Answer("02 75 01 0C 0C 02 00 00 64 19 38"),
              "30 01 0C 0C 02 00 00 64 19 38 3E A4 7C 03 0F 05 3F");
}

TEST_F(ObjectTypes, TheDeviceReportsWhatItSupports) {
    MakeWith("");
    EXPECT_EQ(Answer("02 75 01 0C 0C 02 00 00 64 19 61"),
              "30 01 0C 0C 02 00 00 64 19 61 3E 85 07 07 00 0B 00 00 60 00 3F");
    EXPECT_EQ(Answer("02 75 01 0C 0C 02 00 00 64 19 60"),
              "30 01 0C 0C 02 00 00 64 19 60 3E 85 08 01 FC 8E 71 80 01 2F A2 3F");
}

TEST_F(ObjectTypes, TheServicesOfTheDeviceHaveTheBitsOfItsRevision) {
    struct Revision {
        unsigned number;
        char const* bits;
    };
    for (Revision const& revision :
         {Revision{0, "85 06 05 00 0B 00 00 60"}, Revision{13, "85 06 00 00 0B 00 00 60"},
          Revision{17, "85 07 07 00 0B 00 00 60 00"}, Revision{19, "85 07 04 00 0B 00 00 60 00"},
          Revision{24, "85 07 01 00 0B 00 00 60 00"}}) {
        MakeWith("", "protocol_revision = " + std::to_string(revision.number) + ",");
        EXPECT_EQ(Answer("02 75 01 0C 0C 02 00 00 64 19 61"),
                  std::string("30 01 0C 0C 02 00 00 64 19 61 3E ") + revision.bits + " 3F");
    }
    MakeWith("", "protocol_services_supported = '1',");
    EXPECT_EQ(Answer("02 75 01 0C 0C 02 00 00 64 19 61"), "30 01 0C 0C 02 00 00 64 19 61 3E 82 07 80 3F");
}

TEST_F(ObjectTypes, ADeviceThatSendsSegmentsStatesHowManyItAccepts) {
    std::string const read = "02 75 01 0C 0C 02 00 00 64 19 A7";
    MakeWith("");
    EXPECT_EQ(Answer(read), "30 01 0C 0C 02 00 00 64 19 A7 3E 21 01 3F");
    MakeWith("", "max_segments_accepted = 32,");
    EXPECT_EQ(Answer(read), "30 01 0C 0C 02 00 00 64 19 A7 3E 21 20 3F");
    MakeWith("", "segmentation_supported = 'no-segmentation',");
    EXPECT_EQ(Answer(read), "50 01 0C 91 02 91 20");
}
