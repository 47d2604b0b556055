#include "DeviceFileWriter.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "DatumText.h"
#include "DeviceFile.h"
#include "Hostile.h"
#include "Plants.h"
#include "Simulated.h"

using namespace test;
using namespace workbench;

namespace {

std::string TextOf(DeviceRecord const& device) {
    return WriteDeviceFiles({{device}}).at(0).text;
}

DeviceRecord Read(std::string const& text) {
    return RecordOf(simulator::ParseDeviceFile("copy.lua", text).at(0));
}

std::string CopyOfCopy(DeviceRecord const& device) {
    return TextOf(Read(TextOf(device)));
}

std::string Words(ObjectRecord const& object, PropertyId property) {
    auto const* const values = object.Values(property);
    return values
               ? standard::DatumText(*values, {object.id, static_cast<std::uint32_t>(property), std::nullopt})
               : "none";
}

// What is lost of the object in a copy.
std::string Lost(ObjectRecord const& object) {
    ObjectRecord const copy = Read(TextOf(Device(1, "D", Local(1), {object}))).objects.at(0);
    std::string lost;
    for (auto const& [number, result] : object.properties) {
        auto const property = static_cast<PropertyId>(number);
        if (!result.failure && (!copy.Values(property) || *copy.Values(property) != result.values)) {
            lost += std::to_string(number) + ": " + Words(object, property) + " is " + Words(copy, property) +
                    "\n";
        }
    }
    for (auto const& property : copy.properties) {
        bool const isOurs = property.first == 75 || property.first == 79 || property.first == 371;
        if (!isOurs && object.properties.count(property.first) == 0) {
            lost += "new: " + std::to_string(property.first) + "\n";
        }
    }
    return lost;
}

constexpr char Golden[] = R"(-- A copy of device 1001, made by dorvel-workbench new.

device{
    instance = 1001,
    router = {network = 5, mac = "0A14", name = "router-1"},
    name = "AHU \"1\"",
    defaults = false,
    vendor_name = "Cool\x01",
    max_apdu_length_accepted = 480,
    segmentation_supported = "no-segmentation",
    local_time = clock(),
    objects = {
        analog_value{
            instance = 1,
            name = "Setpoint",
            defaults = false,
            priority_array = {[8] = 21.5},
            units = "degrees-celsius",
            relinquish_default = 20,
            properties = {
                [3000] = {unsigned(1), null()},
            },
        },
        object{
            type = 20, instance = 1,
            name = "Log",
            defaults = false,
            properties = {
                [141] = unsigned(90),
            },
        },
    },
}
)";

std::vector<Datum> Commands(std::size_t priority, Datum const& value) {
    std::vector<Datum> commands(16, Number(DatumKind::Null, 0));
    commands[priority - 1] = value;
    return commands;
}

}  // namespace

TEST(DeviceFileWriter, CopiesADeviceWithItsObjects) {
    DeviceRecord device = Device(
        1001, "AHU \"1\"", Behind(1, 5, {10, 20}),
        {Object(2, 1, "Setpoint",
                {{PropertyId::Present_Value, {Real(21.5)}},
                 {PropertyId::Units, {Enumerated(62)}},
                 {PropertyId::Relinquish_Default, {Real(20)}},
                 {PropertyId::Priority_Array, Commands(8, Real(21.5))},
                 {static_cast<PropertyId>(3000), {Unsigned(1), Number(DatumKind::Null, 0)}}}),
         Object(20, 1, "Log", {{static_cast<PropertyId>(141), {Unsigned(90)}}}), Object(0, 1, "", {})});
    device.objects[2].properties.clear();
    device.device.Set(PropertyId::Vendor_Name, {Text("Cool\x01")});
    device.device.Set(PropertyId::Max_APDU_Length_Accepted, {Unsigned(480)});
    device.device.Set(PropertyId::Segmentation_Supported, {Enumerated(3)});
    device.device.Set(PropertyId::Local_Time, {Calendar(DatumKind::Time, {1, 2, 3, 4})});
    device.device.Set(PropertyId::Object_List, {Unsigned(1)});
    DeviceFile const file = WriteDeviceFiles({{device}}).at(0);
    std::string text = file.text;
    std::string const lost = "-- Not copied: analog-input 1: none of its properties could be read\n";
    ASSERT_NE(text.find(lost), std::string::npos);
    text.erase(text.find(lost), lost.size());
    EXPECT_EQ(text, Golden);
    EXPECT_EQ(file.name, "AHU-1-1001.lua");
    EXPECT_EQ(file.objects, 2u);
    EXPECT_EQ(Read(file.text).device.id.instance, 1001u);
}

TEST(DeviceFileWriter, KeepsValuesOfEveryDatatype) {
    std::vector<Datum> const values = {Unsigned(UINT64_MAX),
                                       Unsigned(70000),
                                       Signed(INT64_MIN),
                                       Signed(-300),
                                       Real(0.1f),
                                       Real(-HUGE_VAL),
                                       Real(1e-300, DatumKind::Double),
                                       Real(HUGE_VAL, DatumKind::Double),
                                       Text("\xC3\xA4\n\"\\\x7F?"),
                                       Text("010", DatumKind::BitString),
                                       Text("", DatumKind::BitString),
                                       Enumerated(4000000000),
                                       Calendar(DatumKind::Date, {124, 3, 15, 5}),
                                       Calendar(DatumKind::Date, {124, 3, 15, 1}),
                                       Calendar(DatumKind::Date, {255, 13, 32, 255}),
                                       Calendar(DatumKind::Time, {255, 255, 255, 255}),
                                       Calendar(DatumKind::Time, {13, 5, 0, 50}),
                                       Number(DatumKind::ObjectIdentifier, 0x4B000005),
                                       Number(DatumKind::Boolean, 1),
                                       Number(DatumKind::Null, 0)};
    for (Datum const& value : values) {
        for (std::uint16_t const type : {0, 3, 17, 39, 42, 50, 20, 23, 45, 46}) {
            EXPECT_EQ(Lost(Object(type, 1, "X",
                                  {{PropertyId::Present_Value, {value}},
                                   {PropertyId::Description, {value}},
                                   {static_cast<PropertyId>(4000), {value}}})),
                      type == 20 ? "" : "new: 111\n");
        }
    }
}

TEST(DeviceFileWriter, KeepsFlagsThatTheSimulatorWouldNotDerive) {
    auto const flags = [](std::string const& bits, std::uint64_t state) {
        return Object(0, 1, "X",
                      {{PropertyId::Status_Flags, {Text(bits, DatumKind::BitString)}},
                       {PropertyId::Event_State, {Enumerated(state)}}});
    };
    EXPECT_EQ(Lost(flags("1000", 2)) + Lost(flags("0000", 2)) + Lost(flags("1010", 2)) + Lost(flags("10", 0)),
              "");
    EXPECT_EQ(TextOf(Device(1, "D", Local(1), {flags("1000", 2)})).find("status_flags"), std::string::npos);
}

TEST(DeviceFileWriter, KeepsSchedules) {
    auto const constructed = [](std::uint8_t tag, std::vector<Datum> children) {
        Datum datum = Number(DatumKind::Constructed, 0);
        datum.tag = tag;
        datum.isContext = true;
        datum.children = std::move(children);
        return datum;
    };
    auto const context = [](std::uint8_t tag, std::vector<char> octets) {
        Datum datum = Number(DatumKind::Unknown, 0);
        datum.tag = tag;
        datum.isContext = true;
        datum.octets = std::move(octets);
        return datum;
    };
    std::vector<Datum> week(7, constructed(0, {}));
    week[1] = constructed(0, {Calendar(DatumKind::Time, {8, 0, 0, 0}), Real(21.5),
                              Calendar(DatumKind::Time, {17, 30, 0, 0}), Number(DatumKind::Null, 0)});
    std::vector<Datum> const events = {constructed(0, {context(0, {126, 12, 25, 5})}),
                                       constructed(2, {Calendar(DatumKind::Time, {0, 0, 0, 0}), Unsigned(3)}),
                                       context(3, {10}),
                                       context(1, {1, 2, 3, 4}),
                                       constructed(2, {}),
                                       context(3, {16})};
    ObjectRecord const schedule = Object(17, 1, "S",
                                         {{PropertyId::Weekly_Schedule, week},
                                          {PropertyId::Exception_Schedule, events},
                                          {PropertyId::Status_Flags, {Text("0000", DatumKind::BitString)}}});
    EXPECT_EQ(Lost(schedule), "");
    std::string const text = TextOf(Device(1, "D", Local(1), {schedule}));
    EXPECT_NE(text.find("weekly_schedule = {tuesday = {{\"08:00\", real(21.5)}, {\"17:30\", null()}}}"),
              std::string::npos);
}

TEST(DeviceFileWriter, KeepsCommands) {
    auto const commanded = [](std::uint16_t type, Datum const& value, Datum const& fallback) {
        return Object(type, 1, "X",
                      {{PropertyId::Present_Value, {value}},
                       {PropertyId::Status_Flags, {Text("0000", DatumKind::BitString)}},
                       {PropertyId::Relinquish_Default, {fallback}},
                       {PropertyId::Priority_Array, Commands(8, value)}});
    };
    EXPECT_EQ(Lost(commanded(1, Real(40), Real(0))), "");
    EXPECT_EQ(Lost(commanded(4, Enumerated(1), Enumerated(0))), "");
    EXPECT_EQ(Lost(commanded(19, Unsigned(3), Unsigned(1))), "");
    EXPECT_EQ(Lost(commanded(42, Calendar(DatumKind::Date, {124, 3, 15, 5}),
                             Calendar(DatumKind::Date, {124, 1, 1, 1}))),
              "");
}

TEST(DeviceFileWriter, InventsNoCommandForAnArrayThatCouldNotBeRead) {
    ObjectRecord valve = Object(1, 1, "Valve",
                                {{PropertyId::Present_Value, {Real(40)}},
                                 {PropertyId::Status_Flags, {Text("0000", DatumKind::BitString)}},
                                 {PropertyId::Relinquish_Default, {Real(0)}}});
    auto& array = valve.properties[static_cast<std::uint32_t>(PropertyId::Priority_Array)];
    array.failure = standard::Failure{standard::Failure::Kind::Silent, 0, 0, {}};
    std::string const unread = TextOf(Device(1, "D", Local(1), {valve}));
    EXPECT_EQ(unread.find("priority_array"), std::string::npos) << unread;
    EXPECT_NE(unread.find("present_value = 40"), std::string::npos) << unread;
    array.failure = standard::Failure{standard::Failure::Kind::Error, 2, 32, {}};
    EXPECT_NE(TextOf(Device(1, "D", Local(1), {valve})).find("priority_array = {[16] = 40"),
              std::string::npos);
}

TEST(DeviceFileWriter, ACopyOfACopyIsTheSame) {
    std::size_t devices = 0;
    for (auto const& entry : std::filesystem::directory_iterator(EXAMPLES_FOLDER "/devices")) {
        for (simulator::Device const& device : simulator::LoadDeviceFiles({entry.path().string()})) {
            std::string const copy = TextOf(RecordOf(device));
            EXPECT_EQ(CopyOfCopy(RecordOf(device)), copy) << entry.path();
            ++devices;
        }
    }
    EXPECT_GE(devices, 5u);
}

TEST(DeviceFileWriter, WhateverDevicesAnswerTheSimulatorTakesTheFile) {
    Hostile hostile;
    std::size_t objects = 0;
    for (int round = 0; round < 200; ++round) {
        Inventory const plant = hostile.Plant();
        for (DeviceFile const& file : WriteDeviceFiles(plant)) {
            objects += file.objects;
            DeviceRecord const copy = Read(file.text);
            EXPECT_EQ(TextOf(Read(TextOf(copy))), TextOf(copy)) << file.text;
        }
    }
    EXPECT_GT(objects, 500u);
}

TEST(DeviceFileWriter, FilesHaveDifferentNamesWithoutSurprises) {
    Inventory const plant{{Device(1, "../../etc/passwd", Local(1), {}), Device(2, "", Local(2), {}),
                           Device(2, "\xFF$(x) ", Local(3), {}), Device(2, "x", Local(4), {}),
                           Device(4194303, "never answered", Local(5), {})}};
    std::vector<std::string> names;
    for (DeviceFile const& file : WriteDeviceFiles(plant)) {
        names.push_back(file.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"etc-passwd-1.lua", "device-2.lua", "x-2.lua", "x-2-2.lua"}));
}

TEST(DeviceFileWriter, SaysThatADefaultIsNotCopied) {
    ObjectRecord value = Object(2, 4, "Setpoint",
                                {{PropertyId::Present_Value, {Real(3)}},
                                 {PropertyId::Relinquish_Default, {Real(5)}},
                                 {PropertyId::Priority_Array, {Real(3)}}});
    auto const files = WriteDeviceFiles({{Device(8, "D", Local(20), {value})}});
    ASSERT_EQ(files.at(0).leftOut.size(), 1u);
    EXPECT_NE(files[0].leftOut[0].find("relinquish-default"), std::string::npos);
    value.properties.erase(static_cast<std::uint32_t>(PropertyId::Priority_Array));
    EXPECT_TRUE(WriteDeviceFiles({{Device(8, "D", Local(20), {value})}}).at(0).leftOut.empty());
}
