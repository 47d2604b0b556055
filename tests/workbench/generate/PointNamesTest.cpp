#include "PointNames.h"

#include <gtest/gtest.h>

#include "Plants.h"

using namespace test;
using namespace workbench;

namespace {

std::vector<std::string> NamesOf(std::vector<std::pair<std::uint32_t, std::string>> const& given) {
    std::vector<ObjectRecord> objects;
    for (auto const& [instance, name] : given) {
        objects.push_back(Object(0, instance, name, {}));
    }
    return VariableNames(objects);
}

using Strings = std::vector<std::string>;

}  // namespace

TEST(PointNames, StayAsTheDeviceHasThemWhereTheyAreReadable) {
    EXPECT_EQ(ReadableName("Zuluft Süd / \"T1\".Ist {°C}"), "Zuluft Süd / \"T1\".Ist {°C}");
}

TEST(PointNames, AreOneLineOfText) {
    EXPECT_EQ(ReadableName(std::string("  a\t\r\n b\0c\x7F", 11)), "a b c");
    EXPECT_EQ(ReadableName("a=b"), "a-b");
    EXPECT_EQ(ReadableName("a\xFF"
                           "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(ReadableName(" \x01 \n"), "");
    EXPECT_LE(ReadableName(std::string(10000, 'x')).size(), 83u);
    EXPECT_LE(ReadableName(std::string(9999, '\xC3')).size(), 83u);
}

TEST(PointNames, EqualOnesHaveTheirObjects) {
    EXPECT_EQ(NamesOf({{1, "T"}, {2, "T"}, {3, "t "}, {4, "T 1"}}),
              (Strings{"T", "T (analog-input 2)", "t (analog-input 3)", "T 1"}));
    EXPECT_EQ(NamesOf({{1, ""}, {2, "\n"}}), (Strings{"analog-input 1", "analog-input 2"}));
    EXPECT_EQ(NamesOf({{1, "T"}, {2, "T"}, {3, "T(analog-input2)"}}),
              (Strings{"T", "T (analog-input 2)", "T(analog-input2) (analog-input 3)"}));
    EXPECT_EQ(NamesOf({{1, "T"}, {2, "T (analog-input 3)"}, {3, "T"}}),
              (Strings{"T", "T (analog-input 3)", "T (analog-input 3) 2"}));
}

TEST(PointNames, DoNotFollowTheOrderOfTheList) {
    EXPECT_EQ(NamesOf({{7, "T"}, {2, "T"}}), (Strings{"T (analog-input 7)", "T"}));
}

TEST(PointNames, BlocksHaveNoDotsAndDifferInMoreThanCase) {
    Inventory const plant{{Device(1, "AHU.1", {}, {}), Device(2, "ahu_1", {}, {}), Device(3, "", {}, {}),
                           Device(3, "", {}, {})}};
    EXPECT_EQ(BlockNames(plant), (Strings{"AHU_1", "ahu_1 (2)", "Device 3", "Device 3 (3)"}));
}

TEST(PointNames, ParametersAreNamesOfLua) {
    Inventory const plant{{Device(1, "AHU-1", {}, {}), Device(2, "ahu 1", {}, {}), Device(3, "Kälte", {}, {}),
                           Device(4, "end", {}, {}), Device(5, "42", {}, {}), Device(6, "\xFF", {}, {}),
                           Device(7, std::string(50, 'A'), {}, {})}};
    EXPECT_EQ(ParameterNames(plant), (Strings{"ahu_1", "ahu_1_2", "k_lte", "device_end", "device_42",
                                              "device_6", std::string(32, 'a')}));
}
