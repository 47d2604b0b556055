#include "StationTable.h"

#include <gtest/gtest.h>

#include "Hex.h"

using simulator::StationTable;

namespace {

using Indices = std::vector<std::size_t>;

// Stations 0A14 and 07 of network 5, and 07 of network 6.
Indices Receivers(std::string const& datagram) {
    StationTable const table({{5, {0x0A, 0x14}}, {5, {7}}, {6, {7}}});
    return table.Receivers({{0x7F000001, 50000}, test::Hex(datagram)});
}

}  // namespace

TEST(StationTable, FindsTheStationOfAnAddress) {
    EXPECT_EQ(Receivers("81 0A 00 0E 01 24 00 05 02 0A 14 FF 00 04"), Indices{0});
    EXPECT_EQ(Receivers("81 0A 00 0D 01 24 00 05 01 07 FF 00 04"), Indices{1});
    EXPECT_EQ(Receivers("81 0A 00 0D 01 24 00 06 01 07 FF 00 04"), Indices{2});
    EXPECT_EQ(Receivers("81 0A 00 0D 01 24 00 06 01 08 FF 00 04"), Indices{});
}

TEST(StationTable, ABroadcastIsForAllOfANetworkOrForAll) {
    EXPECT_EQ(Receivers("81 0B 00 0C 01 20 00 05 00 FF 10 08"), (Indices{1, 0}));
    EXPECT_EQ(Receivers("81 0B 00 0C 01 20 00 06 00 FF 10 08"), Indices{2});
    EXPECT_EQ(Receivers("81 0B 00 0C 01 20 FF FF 00 FF 10 08"), (Indices{0, 1, 2}));
}

TEST(StationTable, TheFirstStationAnswersForTheRouter) {
    for (char const* datagram :
         {"81 0B 00 08 01 00 10 08", "81 0B 00 07 01 80 00", "81 05 00 06 00 3C",
          "81 0A 00 0E 01 24 00 09 02 0A 14 FF 00 04", "81 0B 00 0B 01 A0 FF FF 00 FF 00", "81", ""}) {
        EXPECT_EQ(Receivers(datagram), Indices{0}) << datagram;
    }
}
