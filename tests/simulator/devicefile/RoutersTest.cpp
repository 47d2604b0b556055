// Devices of several files, behind shared routers, and copies of a device.
#include <gtest/gtest.h>

#include "DeviceFile.h"
#include "Hex.h"
#include "Mistake.h"
#include "Station.h"
#include "TemporaryFolder.h"

namespace {

using Numbers = std::vector<std::uint16_t>;

std::string MistakeOf(std::string const& text) {
    try {
        simulator::ParseDeviceFile("plant.lua", text);
    } catch (simulator::Mistake const& found) {
        return found.what();
    }
    return "no mistake";
}

std::string Device(std::string const& name, int instance, std::string const& settings) {
    return "device{name = '" + name + "', instance = " + std::to_string(instance) + ", " + settings + "} ";
}

class Files : public ::testing::Test {
protected:
    std::vector<simulator::Device> Load(std::vector<std::string> const& texts, std::uint32_t copies = 1) {
        std::vector<std::string> paths;
        for (std::string const& text : texts) {
            paths.push_back(folder.Write(std::to_string(paths.size()) + ".lua", text));
        }
        return simulator::LoadDeviceFiles(paths, copies);
    }

    std::string MistakeIn(std::vector<std::string> const& texts, std::uint32_t copies = 1) {
        try {
            Load(texts, copies);
        } catch (simulator::Mistake const& found) {
            return found.what();
        }
        return "no mistake";
    }

    test::TemporaryFolder folder;
};

std::string const OnR1 = "router = {network = 5, mac = '07', name = 'R1'}";

}  // namespace

TEST_F(Files, DevicesOfSeveralFilesAreInTheirOrder) {
    auto const devices = Load({Device("A", 1, ""), Device("B", 2, "") + Device("C", 3, "")});
    ASSERT_EQ(devices.size(), 3u);
    EXPECT_EQ(devices[2].Name(), "C");
}

TEST_F(Files, TwoDevicesMayHaveOneInstanceInDifferentFiles) {
    EXPECT_EQ(MistakeIn({Device("A", 1, ""), Device("B", 1, "")}), "no mistake");
    EXPECT_NE(MistakeIn({Device("A", 1, "") + Device("B", 1, "")}).find("has the same instance"),
              std::string::npos);
}

TEST_F(Files, ARouterLeadsToTheNetworksOfAllItsDevices) {
    auto const devices =
        Load({Device("A", 1, OnR1), Device("B", 2, "router = {network = 1, mac = '07', name = 'R1'}"),
              Device("C", 3, "router = {network = 3, mac = '07'}")});
    EXPECT_EQ(devices[0].Settings().router.networks, (Numbers{5, 1}));
    EXPECT_EQ(devices[1].Settings().router.networks, (Numbers{5, 1}));
    EXPECT_EQ(devices[2].Settings().router.networks, (Numbers{3}));
    EXPECT_EQ(devices[0].Settings().router.ownNetwork, 2);
    EXPECT_EQ(devices[2].Settings().router.ownNetwork, 2);
    simulator::Station station(devices[0]);
    auto const answers = station.Receive({{1, 2}, test::Hex("81 0B 00 07 01 80 00")}, {});
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(test::ToHex(answers[0].octets), "81 0A 00 0B 01 80 01 00 05 00 01");
}

TEST_F(Files, ARouterHasThePortThatAnyOfItsDevicesStates) {
    auto const devices =
        Load({Device("A", 1, OnR1),
              Device("B", 2, "router = {network = 5, mac = '08', name = 'R1'}, port = 5000")});
    EXPECT_EQ(devices[0].Settings().port, 5000);
    EXPECT_EQ(devices[1].Settings().port, 5000);
}

TEST_F(Files, TwoDevicesCannotHaveOneAddress) {
    EXPECT_EQ(MistakeIn({Device("A", 1, OnR1), Device("B", 2, OnR1)}),
              "the device files: device B: router: device A has the mac \"07\" on network 5 of \"R1\"");
    EXPECT_EQ(MistakeOf(Device("A", 1, OnR1) + Device("B", 2, OnR1)),
              "plant.lua: device B: router: device A has the mac \"07\" on network 5 of \"R1\"");
    std::string const unnamed = "router = {network = 5, mac = '07'}";
    EXPECT_EQ(MistakeOf(Device("A", 1, unnamed) + Device("B", 2, unnamed)), "no mistake");
}

TEST_F(Files, StatementsAboutOneRouterMustAgree) {
    std::string const other = "router = {network = 5, mac = '08', name = 'R1', own_network = ";
    EXPECT_EQ(MistakeOf(Device("A", 1, OnR1 + ", port = 5000") + Device("B", 2, other + "1}, port = 5000")),
              "no mistake");
    EXPECT_EQ(MistakeOf(Device("A", 1, OnR1 + ", port = 5000") + Device("B", 2, other + "1}, port = 5001")),
              "plant.lua: device B: router: \"R1\" has port 5000 by another device, not 5001");
    EXPECT_EQ(MistakeOf(Device("A", 1, "router = {network = 5, mac = '07', name = 'R1', own_network = 2}") +
                        Device("B", 2, other + "3}")),
              "plant.lua: device B: router: \"R1\" has own_network 2 by another device, not 3");
    EXPECT_EQ(MistakeOf(Device("A", 1, "router = {network = 6, mac = '07', name = 'R1'}") +
                        Device("B", 2, other + "6}")),
              "plant.lua: device A: router: own_network: must differ from the networks that it leads to");
    EXPECT_EQ(MistakeOf(Device("A", 1, "router = {network = 5, mac = '07', own_network = 5}")),
              "plant.lua:1: device A: router: own_network: must differ from network");
}

TEST_F(Files, ADeviceIsMultiplied) {
    auto const devices = Load({Device("A", 7, "port = 5000, objects = {analog_input{instance = 1}}")}, 3);
    ASSERT_EQ(devices.size(), 3u);
    EXPECT_EQ(devices[0].Name(), "A");
    EXPECT_EQ(devices[1].Name(), "A-2");
    EXPECT_EQ(devices[2].Id(), (simulator::ObjectId{8, 9}));
    EXPECT_EQ(devices[2].Settings().port, 5002);
    EXPECT_FALSE(devices[2].Find({8, 7}));
    ASSERT_TRUE(devices[2].Find({8, 9}));
    EXPECT_TRUE(devices[2].Find({0, 1}));
    simulator::Station station(devices[2]);
    auto const answers =
        station.Receive({{1, 2}, test::Hex("81 0A 00 11 01 04 02 75 01 0C 0C 02 00 00 09 19 4C")}, {});
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(test::ToHex(answers[0].octets).substr(18),
              "30 01 0C 0C 02 00 00 09 19 4C 3E C4 02 00 00 09 C4 00 00 00 01 3F");
}

TEST_F(Files, CopiesBehindARouterHaveTheFollowingAddresses) {
    auto const devices = Load({Device("A", 7, "router = {network = 5, mac = '00FE', name = 'R1'}")}, 3);
    EXPECT_EQ(devices[2].Settings().position->mac, (simulator::Octets{1, 0}));
    EXPECT_EQ(devices[2].Settings().router.networks, Numbers{5});
}

TEST_F(Files, MistakesOfCopies) {
    EXPECT_EQ(MistakeIn({Device("A", 1, "") + Device("B", 2, "")}, 2),
              "--devices: multiplies one device, and the device files have 2");
    EXPECT_EQ(MistakeIn({Device("A", 4194302, "")}, 2),
              "--devices: there are not 2 instances from that of the device file on");
    EXPECT_EQ(
        MistakeIn({Device("A", 1, "router = {network = 5, mac = 'FE', name = 'R'}")}, 3),
        "--devices: there are not 3 addresses on the network of the router from that of the device file on");
    EXPECT_EQ(MistakeIn({Device("A", 1, "port = 65535")}, 2),
              "--devices: there are not 2 ports from that of the device file on");
}
