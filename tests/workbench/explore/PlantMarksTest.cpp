#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DiscoverFormats.h"
#include "PlantDiscovery.h"

namespace workbench {
namespace {

using standard::DiscoveryResult;
using standard::PropertyId;

standard::FoundDevice Found(std::uint32_t instance, std::string const& address, unsigned answers = 2) {
    standard::FoundDevice found;
    found.iAm = {{8, instance}, 480, 3, 7};
    found.peer = ParseAddress(address);
    found.answers = answers;
    found.questions = 2;
    return found;
}

std::vector<std::string> MarksOf(DiscoveredPlant const& plant, std::size_t position) {
    std::vector<std::string> names;
    for (auto const& mark : plant.devices.at(position).marks) {
        names.emplace_back(NameOf(mark.first));
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(PlantMarks, AreMissingWhereNothingIsWrong) {
    DiscoveryResult result;
    result.devices = {Found(1, "10.0.0.1"), Found(2, "10.0.0.2,5:7"), Found(3, "10.0.0.2,5:8")};
    DiscoveredPlant const plant = PlantOf({result});
    EXPECT_FALSE(HasMarks(plant));
    EXPECT_EQ(480u, NumberOf(plant.devices[0].record.device, PropertyId::Max_APDU_Length_Accepted));
}

TEST(PlantMarks, NameDevicesWithTheSameInstance) {
    DiscoveryResult first, second;
    first.devices = {Found(1, "10.0.0.1")};
    second.devices = {Found(1, "10.0.0.1"), Found(1, "10.0.0.2")};
    DiscoveredPlant const plant = PlantOf({first, second});
    ASSERT_EQ(2u, plant.devices.size());
    EXPECT_EQ((Names{"same-instance"}), MarksOf(plant, 0));
    EXPECT_EQ("instance 1 is also at 10.0.0.1:47808", plant.devices[1].marks[0].second);
}

TEST(PlantMarks, NameDevicesThatAnswerTwice) {
    DiscoveryResult result;
    result.devices = {Found(1, "10.0.0.1", 3), Found(2, "10.0.0.2,5:7"), Found(2, "10.0.0.3,5:7")};
    DiscoveredPlant const plant = PlantOf({result});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ((Names{"answers-twice"}), MarksOf(plant, i)) << i;
    }
}

TEST(PlantMarks, NameDevicesAtOneAddressAndThoseWithoutAnInstance) {
    DiscoveryResult result;
    result.devices = {Found(1, "10.0.0.1"), Found(2, "10.0.0.1"), Found(4194303, "10.0.0.2")};
    DiscoveredPlant const plant = PlantOf({result});
    EXPECT_EQ((Names{"shared-address"}), MarksOf(plant, 0));
    EXPECT_EQ((Names{"no-instance"}), MarksOf(plant, 2));
}

TEST(PlantMarks, NameDevicesThatCannotBeReadOrHaveAnotherInstance) {
    DiscoveryResult result;
    result.devices = {Found(1, "10.0.0.1"), Found(2, "10.0.0.2")};
    DiscoveredPlant plant = PlantOf({result});
    DeviceRecord silent, other;
    silent.notes = {"it does not answer"};
    other.device.id = {8, 9};
    standard::Datum name;
    name.kind = standard::DatumKind::CharacterString;
    name.text = "AHU";
    other.device.Set(PropertyId::Object_Name, {name});
    TakeRecords(plant, {silent, other});
    EXPECT_EQ((Names{"not-readable"}), MarksOf(plant, 0));
    EXPECT_EQ((Names{"other-instance"}), MarksOf(plant, 1));
    EXPECT_EQ("AHU", NameOf(plant.devices[1].record.device));
}

TEST(DiscoverFormats, ShowNetworkAndMacAndWhatIsWrong) {
    DiscoveryResult result;
    result.devices = {Found(2, "10.0.0.2,5:10:20", 3)};
    result.routers = {{{0x0A000002, 47808}, {5, 6}}};
    DiscoveredPlant const plant = PlantOf({result});
    std::string const table = DiscoverText(plant, {});
    EXPECT_NE(std::string::npos, table.find("10.0.0.2:47808,5:10:20        5  10:20")) << table;
    EXPECT_NE(std::string::npos, table.find("    it answered 3 times to 2 questions\n"));
    EXPECT_NE(std::string::npos, table.find("  router 10.0.0.2:47808: networks 5, 6\n"));
    EXPECT_NE(std::string::npos, table.find("1 device, something is wrong with 1\n"));
    EXPECT_NE(std::string::npos, DiscoverLines(plant).find("\tno-segmentation\tanswers-twice\n"));
    EXPECT_NE(std::string::npos, DiscoverJson(plant).find(R"("network":5,"mac":"10:20")"));
}

}  // namespace
}  // namespace workbench
