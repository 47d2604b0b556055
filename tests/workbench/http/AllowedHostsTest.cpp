#include "AllowedHosts.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

std::string Read(std::string const& text) {
    try {
        return HostText(ReadHttpAddress(text));
    } catch (std::runtime_error const& mistake) {
        return mistake.what();
    }
}

TEST(HttpAddress, IsLoopbackWithAFreePortByDefault) {
    EXPECT_EQ(Read(""), "127.0.0.1:0");
    EXPECT_EQ(Read("8080"), "127.0.0.1:8080");
    EXPECT_EQ(Read(":8080"), "127.0.0.1:8080");
    EXPECT_EQ(Read("localhost:8080"), "127.0.0.1:8080");
}

TEST(HttpAddress, HasAnIpAddressAndAPort) {
    EXPECT_EQ(Read("192.168.1.5"), "192.168.1.5:0");
    EXPECT_EQ(Read("192.168.1.5:80"), "192.168.1.5:80");
    EXPECT_EQ(Read("[::1]:80"), "[::1]:80");
    EXPECT_EQ(Read("::1"), "[::1]:0");
    EXPECT_EQ(Read("0.0.0.0:65535"), "0.0.0.0:65535");
}

TEST(HttpAddress, SaysWhatIsExpectedForAnythingElse) {
    for (char const* text :
         {"plant.lua", "1.2.3", "1.2.3.4:", "1.2.3.4:x", "1.2.3.4:65536", "[::1", "[::1]x", "-1"}) {
        EXPECT_NE(Read(text).find("is not an address to listen at; expected ADDRESS"), std::string::npos)
            << text;
    }
}

TEST(AllowedHosts, AreTheAddressAndLocalhostOnLoopback) {
    AllowedHosts const hosts({"127.0.0.1", 8080}, {});
    EXPECT_TRUE(hosts.Allows("127.0.0.1:8080"));
    EXPECT_TRUE(hosts.Allows("LocalHost:8080"));
    EXPECT_FALSE(hosts.Allows("127.0.0.1"));
    EXPECT_FALSE(hosts.Allows("127.0.0.1:8081"));
    EXPECT_FALSE(hosts.Allows("127.0.0.2:8080"));
    EXPECT_FALSE(hosts.Allows("evil.example:8080"));
    EXPECT_FALSE(hosts.Allows("127.0.0.1.evil.example:8080"));
    EXPECT_FALSE(hosts.Allows(""));
    EXPECT_FALSE(hosts.Allows("127.0.0.1:8080, 127.0.0.1:8080"));
    EXPECT_FALSE(hosts.Allows("[::1]:8080"));
}

TEST(AllowedHosts, HaveNoPortInTheHeaderForPort80) {
    EXPECT_TRUE(AllowedHosts({"192.168.1.5", 80}, {}).Allows("192.168.1.5"));
    EXPECT_TRUE(AllowedHosts({"::1", 80}, {}).Allows("[::1]"));
}

TEST(AllowedHosts, AreAllIpAddressesButNoNamesWhenTheServerListensAtAll) {
    AllowedHosts const hosts({"0.0.0.0", 8080}, {});
    EXPECT_TRUE(hosts.Allows("192.168.1.5:8080"));
    EXPECT_TRUE(hosts.Allows("[fe80::1]:8080"));
    EXPECT_TRUE(hosts.Allows("localhost:8080"));
    EXPECT_FALSE(hosts.Allows("evil.example:8080"));
    EXPECT_FALSE(hosts.Allows("192.168.1.5"));
}

TEST(AllowedHosts, HaveTheNamesOfAProxyWithAnyPortOrTheGivenOne) {
    AllowedHosts const hosts({"127.0.0.1", 8080}, {"Plant.example", "other.example:8443"});
    EXPECT_TRUE(hosts.Allows("plant.example"));
    EXPECT_TRUE(hosts.Allows("PLANT.example:444"));
    EXPECT_TRUE(hosts.Allows("other.example:8443"));
    EXPECT_FALSE(hosts.Allows("other.example"));
    EXPECT_FALSE(hosts.Allows("x.plant.example"));
}

TEST(AllowedHosts, HaveTheOriginOfTheSameHostOnly) {
    AllowedHosts const hosts({"0.0.0.0", 8080}, {"plant.example"});
    EXPECT_TRUE(hosts.IsOwnOrigin("http://192.168.1.5:8080", "192.168.1.5:8080"));
    EXPECT_TRUE(hosts.IsOwnOrigin("https://plant.example", "192.168.1.5:8080"));
    EXPECT_FALSE(hosts.IsOwnOrigin("http://192.168.1.6:8080", "192.168.1.5:8080"));
    EXPECT_FALSE(hosts.IsOwnOrigin("http://192.168.1.5:8081", "192.168.1.5:8080"));
    EXPECT_FALSE(hosts.IsOwnOrigin("ftp://192.168.1.5:8080", "192.168.1.5:8080"));
    EXPECT_FALSE(hosts.IsOwnOrigin("null", "192.168.1.5:8080"));
    EXPECT_FALSE(hosts.IsOwnOrigin("", "192.168.1.5:8080"));
}

}  // namespace
