#include "ProjectWriter.h"

#include <gtest/gtest.h>

#include "FindingFormat.h"
#include "Hostile.h"
#include "Plants.h"
#include "ProjectCheck.h"

using namespace test;
using namespace workbench;

namespace {

std::string FoundIn(std::string const& text) {
    std::string findings;
    for (Finding const& finding : CheckProjectText("p.lua", text, {}).findings) {
        findings += FindingText(finding, false);
    }
    return findings;
}

bool Has(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

ObjectRecord Analog(std::uint32_t instance, std::string const& name) {
    return Object(0, instance, name, {{PropertyId::Present_Value, {Real(21.5)}}});
}

Inventory One(ObjectRecord object) {
    return {{Device(1001, "AHU-1", Local(20), {std::move(object)})}};
}

Inventory Plant() {
    ObjectRecord silent = Object(2, 9, "Setpoint", {});
    Fail(silent, PropertyId::Present_Value, UnknownProperty());
    DeviceRecord chiller = Device(2001, "Chiller", Behind(1, 5, {10, 20}),
                                  {Object(14, 1, "Stage",
                                          {{PropertyId::Present_Value, {Unsigned(2)}},
                                           {PropertyId::State_Text, {Text("off"), Text("stage \"1\"")}},
                                           {PropertyId::Priority_Array, {}}}),
                                   Object(45, 1, "Offset", {{PropertyId::Present_Value, {Signed(5)}}})});
    return {{Device(1001, "AHU-1", Local(20),
                    {Object(0, 1, "Supply air",
                            {{PropertyId::Present_Value, {Real(21.5)}},
                             {PropertyId::Units, {Enumerated(62)}},
                             {PropertyId::Description, {Text("Behind the coil")}},
                             {PropertyId::High_Limit, {Real(30.5)}}}),
                     silent, Object(54, 1, "Light", {{PropertyId::Present_Value, {Real(1)}}})}),
             chiller, Device(3001, "Rooms", {}, {})}};
}

constexpr char Golden[] =
    R"(-- Made by dorvel-workbench new from what the devices answered: 2 blocks, 2 variables, 3 not read.
-- Another address: --define ahu_1=192.168.1.20:47808

local ahu_1 = Param.ahu_1 or "192.168.1.20:47808"
local chiller = Param.chiller or "192.168.1.1:47808"

-- device 1001 "AHU-1": 1 variable, 2 not read
Task{ Name = "AHU-1", Period = 1000 }

BACnet.new{
    Name = "AHU-1", Task = "AHU-1", DeviceInstance = 1001,
    Address = ahu_1, MAC = ahu_1,
    Vars = {
        { Name = "Supply air", Type = "DataValue", ElementType = "Float", ObjectType = "analog-input",
          ObjectNumber = 1, ObjectProperties = "present-value", Unit = "degrees-celsius",
          Description = "Behind the coil", Point = {HighLimit = 30.5} },
        -- analog-value 9 "Setpoint": the device answers its present-value with: property: unknown-property
        -- lighting-output 1 "Light": the driver cannot decode status-flags of lighting-output, which it always requests
    },
}

-- device 2001 "Chiller": 1 variable, 1 not read
Task{ Name = "Chiller", Period = 1000 }

BACnet.new{
    Name = "Chiller", Task = "Chiller", DeviceInstance = 2001,
    Address = chiller, MAC = "10:20", NetworkNumber = 5,
    Vars = {
        { Name = "Stage", Type = "DataValue", ElementType = "UInt32", ObjectType = "multi-state-output",
          ObjectNumber = 1, ObjectProperties = "present-value", StateTexts = {"off", "stage \"1\""},
          Point = {Settable = true} },
        -- integer-value 1 "Offset": the driver does not read the sign of a number below zero: -5 is read as 251
        -- { Name = "Offset", Type = "DataValue", ElementType = "Int32", ObjectType = "integer-value", ObjectNumber = 1,
        --   ObjectProperties = "present-value", Point = {Settable = true} },
    },
}

-- device 3001 "Rooms": its address is not known; it is not polled
)";

}  // namespace

TEST(ProjectWriter, WritesABlockAndATaskForEachDevice) {
    ProjectText const project = WriteProject(Plant(), {});
    EXPECT_EQ(project.text, Golden);
    EXPECT_EQ(FoundIn(project.text), "");
    EXPECT_EQ(project.blocks, 2u);
    EXPECT_EQ(project.variables, 2u);
    EXPECT_EQ(project.comments, 3u);
    EXPECT_EQ(project.leftOut, std::vector<std::string>{"device 3001 \"Rooms\": its address is not known"});
}

TEST(ProjectWriter, GivesNothingToBeWrittenUnlessAsked) {
    EXPECT_EQ(WriteProject(Plant(), {}).written, 0u);
    ProjectStyle options;
    options.isWritable = true;
    ProjectText const project = WriteProject(Plant(), options);
    EXPECT_EQ(project.written, 1u);
    EXPECT_TRUE(Has(project.text, "ObjectProperties = \"present-value\", Write = true"));
    EXPECT_EQ(FoundIn(project.text), "");
}

TEST(ProjectWriter, LeavesOutValuesThatWouldBeAFaultOrWrong) {
    auto const isRead = [](ObjectRecord const& object) {
        return WriteProject(One(object), {}).variables == 1;
    };
    auto const with = [](std::uint16_t type, Datum const& value) {
        return Object(type, 1, "X", {{PropertyId::Present_Value, {value}}});
    };
    EXPECT_TRUE(isRead(with(17, Real(1))));
    EXPECT_FALSE(isRead(with(17, Enumerated(1))));
    EXPECT_FALSE(isRead(with(17, Number(DatumKind::Null, 0))));
    EXPECT_FALSE(isRead(with(0, Unsigned(1))));
    EXPECT_TRUE(isRead(with(23, Unsigned(4294967295))));
    EXPECT_FALSE(isRead(with(23, Unsigned(4294967296))));
    EXPECT_TRUE(isRead(with(42, Calendar(DatumKind::Date, {124, 1, 1, 255}))));
    EXPECT_FALSE(isRead(with(42, Calendar(DatumKind::Date, {255, 1, 1, 1}))));
    EXPECT_FALSE(isRead(with(42, Calendar(DatumKind::Date, {124, 13, 1, 255}))));
    EXPECT_FALSE(isRead(with(42, Calendar(DatumKind::Date, {124, 1, 32, 255}))));
    EXPECT_FALSE(isRead(with(50, Calendar(DatumKind::Time, {1, 255, 255, 255}))));
    EXPECT_FALSE(isRead(with(44, Calendar(DatumKind::Date, {124, 1, 1, 1}))));
    EXPECT_TRUE(isRead(
        Object(44, 1, "X",
               {{PropertyId::Present_Value,
                 {Calendar(DatumKind::Date, {124, 1, 1, 1}), Calendar(DatumKind::Time, {1, 2, 3, 4})}}})));
    EXPECT_FALSE(isRead(Object(0, 1, "not asked", {})));
    EXPECT_FALSE(isRead(Object(0, 4194303, "no instance", {{PropertyId::Present_Value, {Real(1)}}})));
}

TEST(ProjectWriter, ReadsTheAverageOfAnAveraging) {
    ProjectText const project =
        WriteProject(One(Object(18, 1, "Mean", {{PropertyId::Average_Value, {Real(1)}}})), {});
    EXPECT_TRUE(Has(project.text, "ElementType = \"Float\", ObjectType = \"averaging\""));
    EXPECT_TRUE(Has(project.text, "ObjectProperties = \"average-value\""));
    EXPECT_EQ(FoundIn(project.text), "");
}

TEST(ProjectWriter, TakesPointsOfAListWithoutValues) {
    ObjectRecord point = Object(2, 7, "Setpoint", {{PropertyId::Min_Pres_Value, {Real(10)}}});
    point.listed = {{"keyname", "AHU1.SP"},
                    {"settable", "Y"},
                    {"supports COV", "N"},
                    {"vendor-specific-address", "a=1"},
                    {"present-value-default", "20,5"},
                    {"unit-code", "°C/h"}};
    EXPECT_EQ(WriteProject(One(point), {}).variables, 0u);
    ProjectStyle options;
    options.isFromDevices = false;
    options.isWritable = true;
    ProjectText const project = WriteProject(One(point), options);
    EXPECT_EQ(project.written, 1u);
    EXPECT_TRUE(
        Has(project.text,
            "Point = {KeyName = \"AHU1.SP\", Default = \"20,5\", Minimum = 10, Settable = true, Cov = false, "
            "VendorAddress = \"a=1\"}"));
    EXPECT_TRUE(Has(project.text, "Unit = \"°C/h\""));
    EXPECT_EQ(FoundIn(project.text), "");
}

TEST(ProjectWriter, KeepsTheNumberOfStatesWithoutTexts) {
    ObjectRecord stage =
        Object(13, 1, "Stage",
               {{PropertyId::Present_Value, {Unsigned(2)}}, {PropertyId::Number_Of_States, {Unsigned(7)}}});
    std::string const text = WriteProject(One(stage), {}).text;
    EXPECT_TRUE(Has(text, "Point = {Maximum = 7}")) << text;
    EXPECT_EQ(FoundIn(text), "");
    stage.Set(PropertyId::State_Text, {Text("off"), Text("on")});
    stage.Set(PropertyId::Number_Of_States, {Unsigned(2)});
    EXPECT_FALSE(Has(WriteProject(One(stage), {}).text, "Maximum"));
}

TEST(ProjectWriter, SaysWhatTheWorkbenchCannotLoad) {
    Inventory plant = One(Analog(1, "T"));
    for (std::uint32_t i = 2; i <= 50000; ++i) {
        plant.devices[0].objects.push_back(Analog(i, "T"));
        plant.devices[0].objects.back().Set(PropertyId::Description, {Text(std::string(300, 'd'))});
    }
    ProjectStyle style;
    EXPECT_FALSE(WriteProject(plant, style).isLoadable);
    style.isBrief = true;
    ProjectText const brief = WriteProject(plant, style);
    EXPECT_TRUE(brief.isLoadable);
    EXPECT_FALSE(Has(brief.text, "Description"));
    EXPECT_EQ(FoundIn(brief.text), "");
}

TEST(ProjectWriter, ListsAnObjectOnce) {
    Inventory const plant{{Device(1, "D", Local(1), {Analog(1, "A"), Analog(1, "A")})}};
    ProjectText const project = WriteProject(plant, {});
    EXPECT_EQ(project.variables, 1u);
    EXPECT_TRUE(Has(project.text, "-- analog-input 1 \"A\": the device lists it more than once"));
    EXPECT_EQ(FoundIn(project.text), "");
}

TEST(ProjectWriter, DoesNotPollWhatTheDriverCannotAddress) {
    auto const leftOut = [](DeviceRecord const& device) {
        return WriteProject(Inventory{{device}}, {}).leftOut.at(0);
    };
    EXPECT_EQ(leftOut(Device(7, "D", Behind(1, 5, {1, 2, 3}), {Analog(1, "A")})),
              "device 7 \"D\": the driver cannot address a station with 3 octets, only with 1, 2 or 6");
    DeviceRecord old = Device(7, "D", Local(1), {Analog(1, "A")});
    old.device.Set(PropertyId::Protocol_Services_Supported, {Text("0000000000001001", DatumKind::BitString)});
    EXPECT_EQ(leftOut(old),
              "device 7 \"D\": it does not support ReadPropertyMultiple, which the driver needs");
    EXPECT_EQ(leftOut(Device(7, "D", Local(1), {Object(6, 1, "C", {})})),
              "device 7 \"D\": it has no object that the driver can read");
}

TEST(ProjectWriter, SaysWhatIsMissingOfAPartialReading) {
    Inventory plant = One(Analog(1, "A"));
    plant.devices[0].notes = {"It stopped answering\nafter 1 of 9 objects."};
    ProjectStyle options;
    options.isPartial = true;
    std::string const text = WriteProject(plant, options).text;
    EXPECT_EQ(text.rfind("-- PARTIAL: ", 0), 0u);
    EXPECT_TRUE(Has(text, "-- It stopped answering\\nafter 1 of 9 objects.\n"));
}

TEST(ProjectWriter, TakesMoreDevicesThanLuaHasLocalVariables) {
    Inventory plant;
    for (std::uint8_t i = 1; i < 250; ++i) {
        plant.devices.push_back(Device(i, "Room", Local(i), {Analog(1, "A")}));
    }
    EXPECT_EQ(FoundIn(WriteProject(plant, {}).text), "");
}

TEST(ProjectWriter, WhateverDevicesAnswerTheProjectHasNoFinding) {
    Hostile hostile;
    std::size_t variables = 0;
    for (int round = 0; round < 300; ++round) {
        ProjectStyle options;
        options.isFromDevices = round % 3 != 0;
        options.isWritable = round % 2 == 0;
        Inventory const plant = hostile.Plant();
        ProjectText const project = WriteProject(plant, options);
        EXPECT_EQ(project.text, WriteProject(plant, options).text);
        variables += project.variables;
        if (project.blocks > 0) {
            ASSERT_EQ(FoundIn(project.text), "") << project.text;
        }
    }
    EXPECT_GT(variables, 300u);  // compilers draw in different orders
}
