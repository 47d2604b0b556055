#include "DeviceBrowser.h"

#include <gtest/gtest.h>

#include <string>

#include "SimulatedLink.h"

namespace workbench {
namespace {

using standard::ObjectId;
using standard::PropertyId;
using test::SimulatedLink;

constexpr int ReadProperty = 12;
constexpr int ReadPropertyMultiple = 14;

std::string Device(std::string const& fields, std::string const& objects) {
    return "device{name = 'AHU-1', instance = 1001, " + fields + " objects = {" + objects + "}}\n";
}

std::string Inputs(unsigned count) {
    std::string objects;
    for (unsigned i = 1; i <= count; ++i) {
        std::string const number = std::to_string(i);
        objects += "analog_input{instance = " + number + ", name = 'Temperature " + number +
                   "', present_value = " + number + ", units = 'degrees-celsius', description = 'Room " +
                   number + "'},\n";
    }
    return objects;
}

BrowseSettings Shown() {
    BrowseSettings settings;
    settings.detail = Detail::Shown;
    return settings;
}

DeviceRecord Browse(SimulatedLink& link, BrowseSettings const& settings = {}) {
    return DeviceBrowser(link, settings).Browse(SimulatedLink::At(0));
}

TEST(DeviceBrowser, ReadsTheDeviceAndAllPropertiesOfItsObjects) {
    SimulatedLink link(
        Device("vendor_name = 'Example', model_name = 'X1',",
               "analog_output{instance = 3, name = 'Valve', present_value = 40, min_pres_value = 0},"
               "multi_state_value{instance = 1, name = 'Mode', present_value = 2, number_of_states = 3,"
               " state_text = {'off', 'automatic', 'hand'}}"));
    DeviceRecord const device = Browse(link);
    EXPECT_TRUE(device.isComplete);
    EXPECT_TRUE(device.notes.empty());
    EXPECT_EQ(1001u, device.Instance());
    EXPECT_EQ("AHU-1", NameOf(device.device));
    EXPECT_EQ("Example", TextOf(device.device, PropertyId::Vendor_Name));
    ASSERT_EQ(2u, device.objects.size());
    EXPECT_EQ((ObjectId{1, 3}), device.objects[0].id);
    EXPECT_EQ(40, device.objects[0].Value(PropertyId::Present_Value)->real);
    EXPECT_EQ(0, device.objects[0].Value(PropertyId::Min_Pres_Value)->real);
    EXPECT_EQ(16u, device.objects[0].Values(PropertyId::Priority_Array)->size());
    EXPECT_EQ((std::vector<std::string>{"off", "automatic", "hand"}), StateTextsOf(device.objects[1]));
}

TEST(DeviceBrowser, ReadsWhatTheTableShowsWithFewerRequests) {
    SimulatedLink every(Device("", Inputs(50)));
    SimulatedLink shown(Device("", Inputs(50)));
    Browse(every);
    DeviceRecord const device = Browse(shown, Shown());
    ASSERT_EQ(50u, device.objects.size());
    EXPECT_EQ("Temperature 50", NameOf(device.objects[49]));
    EXPECT_EQ(50, device.objects[49].Value(PropertyId::Present_Value)->real);
    EXPECT_EQ(62u, UnitsOf(device.objects[49]));
    EXPECT_FALSE(device.objects[49].Values(PropertyId::High_Limit));
    EXPECT_LT(shown.sent.size(), every.sent.size());
}

TEST(DeviceBrowser, Reads500ObjectsOfADeviceWithShortAnswersWithoutSegmentation) {
    SimulatedLink link(
        Device("max_apdu_length_accepted = 206, segmentation_supported = 'no-segmentation',", Inputs(500)));
    DeviceRecord const device = Browse(link, Shown());
    EXPECT_TRUE(device.isComplete);
    EXPECT_TRUE(device.notes.empty());
    ASSERT_EQ(500u, device.objects.size());
    for (std::uint32_t i = 0; i < 500; ++i) {
        ASSERT_EQ("Temperature " + std::to_string(i + 1), NameOf(device.objects[i]));
        ASSERT_EQ("Room " + std::to_string(i + 1), TextOf(device.objects[i], PropertyId::Description));
    }
    EXPECT_LT(link.sent.size(), 1000u);
}

TEST(DeviceBrowser, ReadsTextsThatDoNotFitAnAnswerOneByOne) {
    std::string texts;
    for (int i = 0; i < 20; ++i) {
        texts += "'" + std::string(40, static_cast<char>('a' + i)) + "', ";
    }
    SimulatedLink link(
        Device("max_apdu_length_accepted = 206, segmentation_supported = 'no-segmentation',",
               "multi_state_value{instance = 1, name = 'Mode', present_value = 2, number_of_states = 20, "
               "state_text = {" +
                   texts + "}}"));
    DeviceRecord const device = Browse(link, Shown());
    ASSERT_EQ(20u, StateTextsOf(device.objects.at(0)).size());
    EXPECT_EQ(std::string(40, 't'), StateTextsOf(device.objects[0])[19]);
}

TEST(DeviceBrowser, ReadsSinglePropertiesOfADeviceThatKnowsNoLists) {
    SimulatedLink link(Device("", Inputs(3)));
    link.onSend = [&](standard::Datagram const& datagram) {
        bool const isList = datagram.octets.size() > 9 && datagram.octets[9] == ReadPropertyMultiple;
        simulator::Fault fault;
        fault.kind = simulator::FaultKind::Reject;
        link.Station(0).GetFaults().Clear();
        if (isList) {
            link.Station(0).GetFaults().Add(fault);
        }
    };
    DeviceRecord const device = Browse(link, Shown());
    EXPECT_TRUE(device.isComplete);
    EXPECT_EQ("Temperature 3", NameOf(device.objects.at(2)));
    EXPECT_EQ(1, link.Services()[ReadPropertyMultiple]);
    EXPECT_LT(15, link.Services()[ReadProperty]);
}

TEST(DeviceBrowser, GivesASilentDeviceUpWithinTenSeconds) {
    SimulatedLink link(Device("faults = {fault{'silence'}},", Inputs(3)));
    DeviceRecord const device = Browse(link);
    EXPECT_FALSE(device.isComplete);
    EXPECT_EQ(ObjectId::LastInstance, device.Instance());
    EXPECT_EQ((std::vector<std::string>{"it does not answer"}), device.notes);
    EXPECT_GE(10000, link.Elapsed().count());
}

TEST(DeviceBrowser, KeepsWhatWasReadOfADeviceThatFallsSilent) {
    SimulatedLink link(Device("faults = {fault{'silence', after = 0.2}},", Inputs(300)));
    DeviceRecord const device = Browse(link, Shown());
    EXPECT_FALSE(device.isComplete);
    ASSERT_EQ(300u, device.objects.size());
    EXPECT_EQ("Temperature 1", NameOf(device.objects[0]));
    EXPECT_EQ("", NameOf(device.objects[299]));
    EXPECT_EQ((std::vector<std::string>{"not everything was read: it does not answer any more"}),
              device.notes);
    EXPECT_GE(12000, link.Elapsed().count());
}

TEST(DeviceBrowser, KeepsWhatWasReadWhenItIsStopped) {
    SimulatedLink link(Device("", Inputs(300)));
    link.stopAfter = 30;
    DeviceRecord const device = Browse(link, Shown());
    EXPECT_FALSE(device.isComplete);
    EXPECT_EQ("Temperature 1", NameOf(device.objects.at(0)));
    EXPECT_EQ((std::vector<std::string>{"not everything was read: the reading was ended"}), device.notes);
    EXPECT_EQ(30u, link.sent.size());
}

TEST(DeviceBrowser, GoesOnAfterAnObjectThatIsNeverAnswered) {
    SimulatedLink link(Device("faults = {fault{'silence', object = {'analog_input', 1}}},", Inputs(40)));
    DeviceRecord const device = Browse(link, Shown());
    EXPECT_EQ((std::vector<std::string>{"properties without a readable answer in analog-input 1"}),
              device.notes);
    EXPECT_FALSE(device.isComplete);
    EXPECT_EQ("", NameOf(device.objects.at(0)));
    EXPECT_EQ("Temperature 2", NameOf(device.objects.at(1)));
    EXPECT_EQ("Temperature 40", NameOf(device.objects.at(39)));
    EXPECT_GE(10000, link.Elapsed().count());
}

TEST(DeviceBrowser, NotesObjectsThatTheDeviceListsAndDoesNotHave) {
    SimulatedLink link(Device("", Inputs(2)));
    link.onSend = [&](standard::Datagram const& datagram) {
        std::string const octets(datagram.octets.begin(), datagram.octets.end());
        simulator::Fault fault;
        fault.kind = simulator::FaultKind::Error;
        link.Station(0).GetFaults().Clear();
        if (octets.find(std::string("\x0C\0\0\0\2", 5)) != std::string::npos) {
            link.Station(0).GetFaults().Add(fault);
        }
    };
    DeviceRecord const device = Browse(link);
    EXPECT_EQ((std::vector<std::string>{"it lists objects that it does not have: analog-input 2"}),
              device.notes);
    EXPECT_EQ(2u, device.objects.size());
    EXPECT_EQ("Temperature 1", NameOf(device.objects[0]));
}

TEST(DeviceBrowser, ReadsOneObjectWithAllOfItsProperties) {
    SimulatedLink link(Device("", Inputs(2)));
    auto const one = DeviceBrowser(link, Shown()).BrowseObject(SimulatedLink::At(0), {0, 2});
    EXPECT_TRUE(one.isComplete);
    EXPECT_EQ(100, one.object.Value(PropertyId::High_Limit)->real);
    EXPECT_TRUE(one.object.Values(PropertyId::Property_List));
}

TEST(DeviceBrowser, AsksAtMostSoManyTimesASecond) {
    SimulatedLink local(Device("segmentation_supported = 'no-segmentation',", Inputs(100)));
    Browse(local, Shown());
    for (std::size_t i = 1; i < local.sentAt.size(); ++i) {
        ASSERT_LE(std::chrono::milliseconds(10), local.sentAt[i] - local.sentAt[i - 1]);
    }
    standard::NetworkAddress const station{5, {'\x0A', '\x14'}};
    SimulatedLink routed(Device(
        "segmentation_supported = 'no-segmentation', router = {network = 5, mac = '0A14'},", Inputs(10)));
    DeviceRecord const device = DeviceBrowser(routed, Shown()).Browse(SimulatedLink::At(0, station));
    EXPECT_EQ(10u, device.objects.size());
    for (std::size_t i = 1; i < routed.sentAt.size(); ++i) {
        ASSERT_LE(std::chrono::milliseconds(100), routed.sentAt[i] - routed.sentAt[i - 1]);
    }
}

TEST(DeviceBrowser, FindsADeviceThatKnowsNoWildcardInstance) {
    SimulatedLink link(Device("", Inputs(2)));
    link.onSend = [&](standard::Datagram const& datagram) {
        std::string const octets(datagram.octets.begin(), datagram.octets.end());
        simulator::Fault fault;
        fault.kind = simulator::FaultKind::Error;
        link.Station(0).GetFaults().Clear();
        if (octets.find("\x02\x3F\xFF\xFF") != std::string::npos) {
            link.Station(0).GetFaults().Add(fault);
        }
    };
    DeviceRecord const device = Browse(link);
    EXPECT_EQ(1001u, device.Instance());
    EXPECT_EQ("AHU-1", NameOf(device.device));
    EXPECT_EQ(2u, device.objects.size());
}

TEST(DeviceBrowser, EndsInBoundedTimeWithEachFaultOfADevice) {
    for (simulator::FaultRow const& row : simulator::FaultRows) {
        SimulatedLink link(Device("max_apdu_length_accepted = 206,", Inputs(60)));
        simulator::Fault fault;
        fault.kind = row.kind;
        link.Station(0).GetFaults().Add(fault);
        DeviceRecord const device = Browse(link, Shown());
        EXPECT_GE(200000, link.Elapsed().count()) << row.name;
        bool const isWhole = device.objects.size() == 60 && NameOf(device.objects[59]) == "Temperature 60";
        EXPECT_TRUE(isWhole || !device.isComplete || !device.notes.empty()) << row.name;
    }
}

TEST(DeviceBrowser, ShowsHowFarItIs) {
    SimulatedLink link(Device("", Inputs(40)));
    BrowseSettings settings = Shown();
    std::vector<BrowseProgress> steps;
    settings.progress = [&](BrowseProgress const& progress) { steps.push_back(progress); };
    Browse(link, settings);
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(40u, steps.back().objectCount);
    EXPECT_EQ(39u, steps.back().objectsRead);
}

}  // namespace
}  // namespace workbench
