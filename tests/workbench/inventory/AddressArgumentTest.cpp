#include "AddressArgument.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace workbench {
namespace {

using standard::Octets;
using standard::Peer;

Octets Of(std::vector<unsigned> const& numbers) {
    Octets octets;
    for (unsigned const number : numbers) {
        octets.push_back(static_cast<char>(static_cast<unsigned char>(number)));
    }
    return octets;
}

Peer Behind(std::uint16_t network, std::vector<unsigned> const& mac) {
    return {{0xC0A80101, 47808}, standard::NetworkAddress{network, Of(mac)}};
}

std::string Mistake(std::string const& text) {
    try {
        ParseAddress(text);
    } catch (AddressMistake const& mistake) {
        return mistake.what();
    }
    return {};
}

TEST(AddressArgument, IsAnAddressWithThePortOfBacnetUnlessItHasOne) {
    EXPECT_EQ((Peer{{0xC0A80114, 47808}, std::nullopt}), ParseAddress("192.168.1.20"));
    EXPECT_EQ((Peer{{0x7F000001, 1}, std::nullopt}), ParseAddress("127.0.0.1:1"));
    EXPECT_EQ((Peer{{0xFFFFFFFF, 65535}, std::nullopt}), ParseAddress("255.255.255.255:65535"));
}

TEST(AddressArgument, HasTheStationBehindARouterAfterAComma) {
    EXPECT_EQ(Behind(5, {10, 20}), ParseAddress("192.168.1.1,5:10:20"));
    EXPECT_EQ(Behind(65534, {7}), ParseAddress("192.168.1.1:47808,65534:7"));
    EXPECT_EQ(Behind(1, {10, 0, 0, 7, 0xBA, 0xC0}), ParseAddress("192.168.1.1,1:10.0.0.7:47808"));
    EXPECT_EQ(Behind(1, {10, 0, 0, 7, 0xBA, 0xC0}), ParseAddress("192.168.1.1,1:10.0.0.7"));
    EXPECT_EQ(Behind(5, {10, 20}), ParseAddress("192.168.1.1,5:0x0a14"));
    EXPECT_EQ(Behind(5, {1, 2, 0xFF}), ParseAddress("192.168.1.1,5:0x0102FF"));
}

TEST(AddressArgument, IsShownAsItCanBeTypedAgain) {
    std::vector<std::pair<Peer, std::string>> const shown = {
        {{{0xC0A80114, 47808}, std::nullopt}, "192.168.1.20:47808"},
        {Behind(5, {10, 20}), "192.168.1.1:47808,5:10:20"},
        {Behind(5, {200}), "192.168.1.1:47808,5:200"},
        {Behind(5, {10, 0, 0, 7, 0xBA, 0xC0}), "192.168.1.1:47808,5:10.0.0.7:47808"},
        {Behind(5, {10, 0, 0, 7, 0, 0}), "192.168.1.1:47808,5:0x0A0000070000"},
        {Behind(5, {1, 2, 3}), "192.168.1.1:47808,5:0x010203"},
        {Behind(5, std::vector<unsigned>(255, 0xAB)), "192.168.1.1:47808,5:0x" + [] {
             std::string digits;
             for (int i = 0; i < 255; ++i) {
                 digits += "AB";
             }
             return digits;
         }()}};
    for (auto const& [peer, text] : shown) {
        EXPECT_EQ(text, AddressText(peer));
        EXPECT_EQ(peer, ParseAddress(text)) << text;
    }
}

TEST(AddressArgument, SaysWhatIsWrongAndWhatIsAllowed) {
    EXPECT_EQ(
        "\"192.168.1\" is not an IPv4 address; allowed is ADDRESS[:PORT][,NET:MAC], such as 192.168.1.20, "
        "192.168.1.20:47809 or 192.168.1.1,5:10:20",
        Mistake("192.168.1"));
    EXPECT_EQ("\"65536\" is not a port; allowed is 1 to 65535", Mistake("10.0.0.1:65536"));
    EXPECT_EQ("\"0\" is not a network number; allowed is 1 to 65534", Mistake("10.0.0.1,0:7"));
    EXPECT_EQ("\"65535\" is not a network number; allowed is 1 to 65534", Mistake("10.0.0.1,65535:7"));
    EXPECT_EQ("\"5\" is not a station behind a router; allowed is NET:MAC, such as 5:10:20",
              Mistake("10.0.0.1,5"));
    EXPECT_EQ(
        "\"1:2:3\" is not a MAC address; allowed is one octet such as 7, two such as 10:20, an address such "
        "as "
        "10.0.0.7:47808, or hexadecimal octets such as 0x0A14",
        Mistake("10.0.0.1,5:1:2:3"));
}

TEST(AddressArgument, RefusesWhatItIsNot) {
    for (char const* const text : {"",
                                   ",",
                                   ":",
                                   "10.0.0.1:",
                                   "10.0.0.1:0",
                                   "10.0.0.256",
                                   "10.0.0.1.2",
                                   "10..0.1",
                                   "10.0.0.1:47808:1",
                                   " 10.0.0.1",
                                   "10.0.0.1 ",
                                   "-1.0.0.1",
                                   "+1.0.0.1",
                                   "plant",
                                   "10.0.0.1,",
                                   "10.0.0.1,:",
                                   "10.0.0.1,5:",
                                   "10.0.0.1,5:256",
                                   "10.0.0.1,5:0x",
                                   "10.0.0.1,5:0x1",
                                   "10.0.0.1,5:0x1G",
                                   "10.0.0.1,5:0x1-",
                                   "10.0.0.1,5:-1",
                                   "10.0.0.1,5:10.0.0.7:0",
                                   "10.0.0.1,5:7,6:8",
                                   "99999999999.0.0.1",
                                   "10.0.0.1,99999999999:1",
                                   "10.0.0.1\n"}) {
        EXPECT_NE("", Mistake(text)) << text;
    }
    EXPECT_NE("", Mistake("10.0.0.1,5:0x" + std::string(512, 'A')));
    EXPECT_NE("", Mistake(std::string("10.0.0.1\0", 9)));
}

TEST(AddressArgument, IsAnEndpointWhereARouterMakesNoSense) {
    EXPECT_EQ((standard::Endpoint{0x0A000001, 47809}), ParseEndpoint("10.0.0.1:47809"));
    EXPECT_THROW(ParseEndpoint("10.0.0.1,5:7"), AddressMistake);
}

}  // namespace
}  // namespace workbench
