#include "AddressText.h"

#include <gtest/gtest.h>

#include <random>

#include "Network/AddressParser.h"

using namespace workbench;

namespace {

TEST(AddressText, AnAddressWithAPortIsAPeer) {
    EXPECT_EQ(MistakeInPeer("192.168.1.20:47808"), "");
    EXPECT_EQ(MistakeInPeer("0.0.0.0:1"), "");
    EXPECT_EQ(MistakeInPeer("255.255.255.255:65535"), "");
}

TEST(AddressText, AMistakeInAPeerNamesThePartThatIsWrong) {
    std::string const example = " is not an address with a port such as \"192.168.1.20:47808\"";
    EXPECT_EQ(MistakeInPeer("192.168.1.20"), "\"192.168.1.20\"" + example);
    EXPECT_EQ(MistakeInPeer("1.2.3.4:5:6"), "\"1.2.3.4:5:6\"" + example);
    EXPECT_EQ(MistakeInPeer(""), "\"\"" + example);
    EXPECT_EQ(MistakeInPeer("1.2.3:47808"), "\"1.2.3\" is not an IPv4 address such as \"192.168.1.20\"");
    EXPECT_EQ(MistakeInPeer("1.2.3.300:47808"),
              "\"1.2.3.300\" is not an IPv4 address such as \"192.168.1.20\"");
    EXPECT_EQ(MistakeInPeer("1.2.3.-1:47808"),
              "\"1.2.3.-1\" is not an IPv4 address such as \"192.168.1.20\"");
    EXPECT_EQ(MistakeInPeer("plc:47808"), "\"plc\" is not an IPv4 address such as \"192.168.1.20\"");
}

TEST(AddressText, APortIsFrom1To65535) {
    EXPECT_EQ(MistakeInPeer("1.2.3.4:0"), "\"0\" is not a port from 1 to 65535");
    EXPECT_EQ(MistakeInPeer("1.2.3.4:65536"), "\"65536\" is not a port from 1 to 65535");
    EXPECT_EQ(MistakeInPeer("1.2.3.4:"), "\"\" is not a port from 1 to 65535");
    EXPECT_EQ(MistakeInPeer("1.2.3.4: 80"), "\" 80\" is not a port from 1 to 65535");
    EXPECT_EQ(MistakeInPeer("1.2.3.4:99999999999999999999"),
              "\"99999999999999999999\" is not a port from 1 to 65535");
}

TEST(AddressText, AMistakeInADeviceAddressIsReported) {
    for (char const* const good :
         {"192.168.1.20:47808", "192.168.1.20", "5", "0", "4194301", "10:20", "255:0", ""}) {
        EXPECT_EQ(MistakeInDeviceAddress(good), "") << good;
    }
    for (char const* const bad : {"x", "4194302", "-1", "10:256", "10:20:30", "10:", "0A:14"}) {
        EXPECT_EQ(MistakeInDeviceAddress(bad),
                  "\"" + std::string(bad) +
                      "\" is not a device address such as \"192.168.1.20:47808\", \"10:20\" or \"5\"");
    }
    EXPECT_EQ(MistakeInDeviceAddress("1.2.3.256"),
              "\"1.2.3.256\" is not an IPv4 address such as \"192.168.1.20\"");
    EXPECT_EQ(MistakeInDeviceAddress("1.2.3.4:70000"), "\"70000\" is not a port from 1 to 65535");
}

// The driver converts every address that passes to octets.
TEST(AddressText, TheDriverReadsEveryAddressThatPasses) {
    static constexpr char letters[] = "0123456789.:.:125 -aA";
    std::mt19937 random(11);
    int passed = 0;
    for (int i = 0; i < 10000; ++i) {
        std::string text;
        for (unsigned n = random() % 12; n > 0; --n) {
            text += letters[random() % (sizeof letters - 1)];
        }
        if (MistakeInDeviceAddress(text).empty()) {
            ++passed;
            EXPECT_NO_THROW(EXPECT_EQ(Network::AddressParser::ParseAddress(text).empty(), text.empty()))
                << text;
        }
    }
    EXPECT_GT(passed, 100);
}

}  // namespace
