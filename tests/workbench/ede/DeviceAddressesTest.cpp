#include "DeviceAddresses.h"

#include <gtest/gtest.h>

#include "EdeTexts.h"
#include "ProjectError.h"
#include "TemporaryFolder.h"

using workbench::AddDeviceAddress;
using workbench::AddressTable;
using workbench::ProjectError;
using workbench::ReadAddressTable;

namespace {

AddressTable const Seven{{7, {{0x0A000001, 47808}, {}}}};

std::string MistakeOf(std::string const& text) {
    try {
        AddressTable table = Seven;
        AddDeviceAddress(table, text);
    } catch (ProjectError const& error) {
        return error.what();
    }
    return "";
}

}  // namespace

TEST(DeviceAddresses, AreReadFromTheCommandLine) {
    AddressTable table;
    AddDeviceAddress(table, "2001=192.168.1.20");
    AddDeviceAddress(table, " 5 = 10.0.0.1:47809,3:10:20");
    EXPECT_EQ(table.at(2001).endpoint.Text(), "192.168.1.20:47808");
    EXPECT_EQ(table.at(5).endpoint.Text(), "10.0.0.1:47809");
    ASSERT_TRUE(table.at(5).remote);
    EXPECT_EQ(table.at(5).remote->network, 3);
}

TEST(DeviceAddresses, WithMistakesAreReported) {
    EXPECT_EQ(MistakeOf("x=10.0.0.1"),
              "\"x=10.0.0.1\": \"x\" is not a device instance; allowed is 0 to 4194302, as in "
              "2001=192.168.1.20");
    EXPECT_NE(MistakeOf("3=nowhere").find("\"3=nowhere\": "), std::string::npos);
    EXPECT_NE(MistakeOf("3").find("\"3\": "), std::string::npos);
    EXPECT_EQ(MistakeOf("7=10.0.0.2"),
              "\"7=10.0.0.2\": device 7 has the address 10.0.0.1:47808 already, and now 10.0.0.2:47808; a "
              "device has one");
    EXPECT_EQ(MistakeOf("7=10.0.0.1"), "");
}

TEST(DeviceAddresses, AreReadFromATableWithAnySeparator) {
    test::TemporaryFolder const folder;
    AddressTable const table = ReadAddressTable(
        folder.Write("a.csv",
                     "\xEF\xBB\xBFinstance;address\r\n# comment\r\n1;10.0.0.1\r\n\r\n"
                     "2,10.0.0.2:47809\r\n3 10.0.0.3,5:7\r\n4\t10.0.0.4\n\"5\";\"10.0.0.5\"\n6=10.0.0.6;"));
    ASSERT_EQ(table.size(), 6u);
    EXPECT_EQ(table.at(2).endpoint.Text(), "10.0.0.2:47809");
    EXPECT_EQ(table.at(3).remote->network, 5);
    EXPECT_EQ(table.at(5).endpoint.Text(), "10.0.0.5:47808");
    EXPECT_EQ(table.at(6).endpoint.Text(), "10.0.0.6:47808");
}

TEST(DeviceAddresses, OfATableAreReportedWithTheirLine) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("a.csv", "1;10.0.0.1\nx;10.0.0.2\n");
    try {
        ReadAddressTable(path);
        FAIL();
    } catch (ProjectError const& error) {
        EXPECT_EQ(error.what(), path +
                                    ":2: \"x\" is not a device instance; allowed is 0 to 4194302, as in "
                                    "2001=192.168.1.20");
    }
    EXPECT_THROW(ReadAddressTable(folder.Path() + "/missing"), ProjectError);
}

TEST(DeviceAddresses, OfDevicesThatAreNotInTheTableAreLinesOfTheReport) {
    workbench::EdeImport import = test::ImportOf("K;7;A;0;1\nK;8;A;0;1\nK;8;B;0;2\n");
    Resolve(import.inventory, Seven, import.report);
    ASSERT_TRUE(import.inventory.devices[0].peer);
    EXPECT_EQ(import.inventory.devices[0].peer->endpoint.Text(), "10.0.0.1:47808");
    EXPECT_FALSE(import.inventory.devices[1].peer);
    EXPECT_EQ(test::LinesOf(import),
              "device 8: has no address, so its points (2) are left out; give one with "
              "-D 8=ADDRESS, --addresses or discover\n");
    EXPECT_FALSE(import.report.IsWhole());
}
