#include "DeviceFile.h"

#include <gtest/gtest.h>

#include "Mistake.h"

namespace {

// The message about a file with a mistake.
std::string MistakeOf(std::string const& text) {
    try {
        simulator::ParseDeviceFile("plant.lua", text);
    } catch (simulator::Mistake const& found) {
        EXPECT_EQ(std::string(found.what()).find('\n'), std::string::npos);
        return found.what();
    }
    return "no mistake";
}

// The same for an object on line 2 of a device.
std::string InObject(std::string const& object) {
    return MistakeOf("device{name = 'AHU-1', instance = 1, objects = {\n" + object + "}}");
}

std::string const Where = "plant.lua:2: device AHU-1: ";

}  // namespace

TEST(DeviceFile, DevicesAndTheirObjects) {
    auto const devices = simulator::ParseDeviceFile("plant.lua", R"(
        device{name = "A", instance = 1, port = 50001, objects = {analog_input{instance = 7}}}
        device{name = "B", instance = 2, router = {network = 5, mac = "0A14"}}
    )");
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0].Name(), "A");
    EXPECT_EQ(devices[0].Id(), (simulator::ObjectId{8, 1}));
    EXPECT_EQ(devices[0].Settings().port, 50001);
    ASSERT_TRUE(devices[0].Find({0, 7}));
    EXPECT_EQ(devices[0].Find({0, 7})->Name(), "analog_input 7");
    EXPECT_FALSE(devices[0].Find({0, 8}));
    ASSERT_TRUE(devices[1].Settings().position);
    EXPECT_EQ(devices[1].Settings().position->network, 5);
    EXPECT_EQ(devices[1].Settings().position->mac, (simulator::Octets{0x0A, 0x14}));
}

TEST(DeviceFile, MistakesOfTheLanguageNameTheirLine) {
    EXPECT_EQ(MistakeOf("\ndevice{"), "plant.lua:2: unexpected symbol near <eof>");
    EXPECT_EQ(MistakeOf("\n\nlocal a = nothing.at_all").substr(0, 13), "plant.lua:3: ");
    EXPECT_EQ(MistakeOf("pump{}").substr(0, 50), "plant.lua:1: attempt to call a nil value (global '");
    EXPECT_EQ(MistakeOf("error('a\\nb')"), "plant.lua:1: a\\nb");
    EXPECT_EQ(MistakeOf("error({})"), "plant.lua: the script raised an error that is not a text but a table");
}

TEST(DeviceFile, AFileWithoutADevice) {
    EXPECT_EQ(MistakeOf("local x = 1"), "plant.lua: describes no device");
}

TEST(DeviceFile, AMissingFile) {
    try {
        simulator::LoadDeviceFiles({"/no/such/file.lua"});
        FAIL();
    } catch (simulator::Mistake const& found) {
        EXPECT_STREQ(found.what(), "/no/such/file.lua: cannot be read: No such file or directory");
    }
}

TEST(DeviceFile, FilesAndModulesAreOutOfReach) {
    for (char const* name :
         {"io",      "os",         "require",     "dofile",       "loadfile",    "load",           "debug",
          "package", "coroutine",  "pcall",       "setmetatable", "rawset",      "collectgarbage", "print",
          "utf8",    "string.rep", "string.gsub", "string.find",  "string.dump", "table.move",     "_G"}) {
        EXPECT_EQ(MistakeOf(std::string("assert(") + name + " == nil)"), "plant.lua: describes no device")
            << name;
    }
}

TEST(DeviceFile, AnEndlessLoopEnds) {
    std::string const endless =
        "the device file has run for 20000000 instructions, the limit, and has not ended";
    EXPECT_EQ(MistakeOf("\nwhile true do end"), "plant.lua:2: " + endless);
    EXPECT_EQ(MistakeOf("local function f() return f() end f()"), "plant.lua:1: " + endless);
}

TEST(DeviceFile, MemoryIsLimited) {
    EXPECT_NE(MistakeOf("local s = 'x' while true do s = s .. s end").find("not enough memory"),
              std::string::npos);
    EXPECT_NE(MistakeOf("local t = {} for i = 1, 1e9 do t[i] = {} end").find("not enough memory"),
              std::string::npos);
}

TEST(DeviceFile, CompiledCodeIsAMistake) {
    EXPECT_NE(MistakeOf("\x1bLua").find("binary chunk"), std::string::npos);
}

TEST(DeviceFile, MistakesOfADevice) {
    EXPECT_EQ(MistakeOf("device{name = 'A'}"),
              "plant.lua:1: device A: instance: must be a whole number from 0 up, not nil");
    EXPECT_EQ(MistakeOf("device{instance = 1, name = 5}"),
              "plant.lua:1: device: name: must be a text, not 5");
    EXPECT_EQ(MistakeOf("device{instance = 4194303}"),
              "plant.lua:1: device: instance: must be at most 4194302, not 4194303");
    EXPECT_EQ(MistakeOf("device{instance = 1, colour = 'red'}"),
              "plant.lua:1: device: unknown property \"colour\"");
    EXPECT_EQ(MistakeOf("device{instance = 1, objects = 5}"), "plant.lua:1: device: must be a list, not 5");
    EXPECT_EQ(MistakeOf("device{instance = 1, objects = {{}}}"),
              "plant.lua:1: device: objects: must be objects such as analog_input{...}, not a table");
    EXPECT_EQ(MistakeOf("device{instance = 1, max_apdu_length_accepted = 49}"),
              "plant.lua:1: device: max_apdu_length_accepted: must be from 50 to 1476");
    EXPECT_EQ(MistakeOf("device{instance = 1, proposed_window_size = 128}"),
              "plant.lua:1: device: proposed_window_size: must be at most 127, not 128");
    EXPECT_EQ(MistakeOf("device{instance = 1, router = {network = 0, mac = '0A'}}"),
              "plant.lua:1: device: router: network: must be at least 1");
    EXPECT_EQ(MistakeOf("device{instance = 1, router = {network = 5, mac = '0A1'}}"),
              "plant.lua:1: device: router: must be pairs of hexadecimal digits, not \"0A1\"");
    EXPECT_EQ(MistakeOf("device{instance = 1, router = {network = 5, mac = ''}}"),
              "plant.lua:1: device: router: mac: must have 1 to 18 octets");
    EXPECT_EQ(MistakeOf("device{instance = 1} device{instance = 1, name = 'B'}"),
              "plant.lua: device B: another device has the same instance");
}

TEST(DeviceFile, MistakesOfAnObject) {
    EXPECT_EQ(InObject("analog_inptu{instance = 1}").substr(0, 13), "plant.lua:2: ");
    EXPECT_EQ(InObject("analog_input{}"),
              Where + "analog_input: instance: must be a whole number from 0 up, not nil");
    EXPECT_EQ(InObject("analog_input{instance = 1, presnt_value = 3}"),
              Where + "analog_input 1: unknown property \"presnt_value\"");
    EXPECT_EQ(InObject("analog_input{instance = 1, polarity = 'normal'}"),
              Where + "analog_input 1: this type has no property \"polarity\"");
    EXPECT_EQ(InObject("analog_input{instance = 1}, analog_input{instance = 1}"),
              Where + "analog_input 1: there are two of it");
    EXPECT_EQ(InObject("analog_input{instance = 1, name = 'x'}, analog_value{instance = 1, name = 'x'}"),
              Where + "analog_value 1: another object has the name \"x\"");
    EXPECT_EQ(InObject("analog_input{instance = 1, 5}"),
              Where + "analog_input 1: must have names for all its values");
    EXPECT_EQ(InObject("analog_input{instance = 1, [true] = 5}"),
              "plant.lua:2: the keys of a table must be names or 1, 2, 3 ..., not true");
    EXPECT_EQ(InObject("analog_input{instance = 1, present_value = tostring}"),
              Where + "analog_input 1: present_value: must be a number, not a function");
}

TEST(DeviceFile, TheLineIsThatOfTheObject) {
    EXPECT_EQ(MistakeOf("device{name = 'D', instance = 1,\nobjects = {\nanalog_input{instance = 1},\n"
                        "binary_input{instance = 1,\npresent_value = 'on'}}}"),
              "plant.lua:4: device D: binary_input 1: present_value: unknown name \"on\"");
}

TEST(DeviceFile, MistakesOfAValue) {
    struct Row {
        char const* object;
        char const* message;
    };
    constexpr Row rows[] = {
        {"analog_input{instance = 1, present_value = 'x'}",
         "analog_input 1: present_value: must be a number, not \"x\""},
        {"analog_input{instance = 1, present_value = 1e39}",
         "analog_input 1: present_value: must be a number of single precision, not 1e+39"},
        {"analog_input{instance = 1, units = 'degrees'}", "analog_input 1: units: unknown name \"degrees\""},
        {"analog_input{instance = 1, units = 65536}",
         "analog_input 1: units: must be at most 65535, not 65536"},
        {"analog_input{instance = 1, out_of_service = 1}",
         "analog_input 1: out_of_service: must be true or false, not 1"},
        {"analog_output{instance = 1, priority_array = 5}",
         "analog_output 1: priority_array: must be a table such as {[8] = 21.5}, not 5"},
        {"analog_output{instance = 1, priority_array = {[17] = 5}}",
         "analog_output 1: priority_array: 17: must be a priority from 1 to 16, not \"17\""},
        {"analog_output{instance = 1, present_value = 1, priority_array = {[8] = 5}}",
         "analog_output 1: priority_array: must not be given beside present_value"},
        {"analog_value{instance = 1, priority_array = {[8] = 5}}",
         "analog_value 1: priority_array: needs relinquish_default"},
        {"object{instance = 1}", "object: type: must be a text, not nil"},
        {"object{type = 'pump', instance = 1}", "object: type: unknown object type \"pump\""},
        {"object{type = 1024, instance = 1}", "object: type: must be at most 1023, not 1024"},
        {"object{type = 20, instance = 1, units = 62}", "trend_log 1: this type has no property \"units\""},
        {"object{type = 300, instance = 1, properties = {[75] = 1}}",
         "object_type_300 1: properties: object_identifier: cannot be given"},
        {"analog_input{instance = 1, properties = {speed = 1}}",
         "analog_input 1: properties: unknown property \"speed\""},
        {"analog_input{instance = 1, properties = {[-1] = 1}}",
         "analog_input 1: properties: unknown property \"-1\""},
        {"analog_input{instance = 1, properties = {[4194304] = 1}}",
         "analog_input 1: properties: must be at most 4194303, not 4194304"},
        {"analog_input{instance = 1, properties = {[600] = {1, clock()}}}",
         "analog_input 1: properties: 600: element 2: cannot be a clock"},
        {"analog_input{instance = 1, properties = {[600] = tagged(2)}}",
         "analog_input 1: properties: 600: tagged: must have a tag number and octets in hexadecimal"},
        {"analog_input{instance = 1, properties = {[600] = tagged(1, '01')}}",
         "analog_input 1: properties: 600: tagged: a Boolean has no contents octets: use boolean(true)"},
        {"analog_input{instance = 1, properties = {[600] = context(255, '01')}}",
         "analog_input 1: properties: 600: context: must be at most 254, not 255"},
        {"analog_input{instance = 1, properties = {[600] = constructed(0, ramp{})}}",
         "analog_input 1: properties: 600: constructed: must not move"},
        {"analog_input{instance = 1, defaults = 1}",
         "analog_input 1: defaults: must be true or false, not 1"},
        {"integer_value{instance = 1, present_value = 1.5}",
         "integer_value 1: present_value: must be a whole number, not 1.5"},
        {"positive_integer_value{instance = 1, present_value = -1}",
         "positive_integer_value 1: present_value: must be a whole number from 0 up, not -1"},
        {"octet_string_value{instance = 1, present_value = 'XY'}",
         "octet_string_value 1: present_value: must be pairs of hexadecimal digits, not \"XY\""},
        {"bit_string_value{instance = 1, present_value = '012'}",
         "bit_string_value 1: present_value: must be a text of 0 and 1, not \"012\""},
        {"date_value{instance = 1, present_value = '2023-02-29'}",
         "date_value 1: present_value: must be a date like \"2024-03-15\", not \"2023-02-29\""},
        {"datetime_value{instance = 1, present_value = '2024-01-01'}",
         "datetime_value 1: present_value: must be a date and time like \"2024-03-15 08:00:00\", not "
         "\"2024-01-01\""},
        {"analog_input{instance = 1, present_value = clock()}",
         "analog_input 1: present_value: cannot be a clock: it is not a date or time"},
        {"date_value{instance = 1, present_value = ramp{}}",
         "date_value 1: present_value: cannot move: it is not a number"},
        {"analog_input{instance = 1, present_value = ramp{form = 1}}",
         "analog_input 1: present_value: ramp: unknown name \"form\""},
        {"analog_input{instance = 1, present_value = toggle{period = 0}}",
         "analog_input 1: present_value: toggle: period: must be above 0"},
        {"analog_input{instance = 1, present_value = ramp{from = 0/0}}",
         "analog_input 1: present_value: ramp: from: is too large"},
        {"analog_input{instance = 1, present_value = steps{values = {}}}",
         "analog_input 1: present_value: steps: values: must not be empty"},
        {"accumulator{instance = 1, scale = {}}",
         "accumulator 1: scale: must have float_scale or integer_scale"},
        {"analog_input{instance = 1, status_flags = '11111'}",
         "analog_input 1: status_flags: must have four bits"},
        {"averaging{instance = 1, object_property_reference = {'pump', 1, 'present_value'}}",
         "averaging 1: object_property_reference: unknown object type \"pump\""},
        {"averaging{instance = 1, object_property_reference = {'loop', 1, 'speed'}}",
         "averaging 1: object_property_reference: unknown property \"speed\""},
        {"multi_state_input{instance = 1, state_text = {'a', 5}}",
         "multi_state_input 1: state_text: element 2: must be a text, not 5"},
        {"schedule{instance = 1, weekly_schedule = {mon = {}}}",
         "schedule 1: weekly_schedule: unknown name \"mon\""},
        {"schedule{instance = 1, weekly_schedule = {monday = {{'25:00', 1}}}}",
         "schedule 1: weekly_schedule: monday: must be a time like \"08:00:00\", not \"25:00\""},
        {"schedule{instance = 1, weekly_schedule = {monday = {{'08:00'}}}}",
         "schedule 1: weekly_schedule: monday: an entry must be a time and a value"},
        {"schedule{instance = 1, exception_schedule = {{entries = {}}}}",
         "schedule 1: exception_schedule: event 1: an event must have one of date, from and to, week_n_day, "
         "calendar"},
        {"schedule{instance = 1, exception_schedule = {{calendar = 1, priority = 17}}}",
         "schedule 1: exception_schedule: event 1: must be at most 16, not 17"},
        {"schedule{instance = 1, present_value = real()}",
         "schedule 1: present_value: real: must have one value"},
        {"schedule{instance = 1, present_value = analog_input{}}",
         "schedule 1: present_value: cannot be an analog_input"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(InObject(row.object).substr(0, (Where + row.message).size()), Where + row.message);
    }
}

TEST(DeviceFile, ATableWithoutEnd) {
    EXPECT_EQ(MistakeOf("local t = {} t.t = t device{name = 'D', instance = 1, objects = t}"),
              "plant.lua:1: device D: must be a list, not a table");
    EXPECT_EQ(MistakeOf("local t = {} for i = 1, 3 do t[i] = t end device{instance = 1, objects = t}"),
              "plant.lua:1: the script passes too many values");
    EXPECT_EQ(MistakeOf("local t = {} for i = 0, 40 do t[2^i] = 1 end device{instance = 1, objects = t}")
                  .substr(0, 12),
              "plant.lua:1:");
}
