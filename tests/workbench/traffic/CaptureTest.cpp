#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "CaptureFile.h"
#include "FakeEnvironment.h"
#include "Hex.h"
#include "RecordingEnvironment.h"

using namespace test;
using namespace workbench;

namespace {

constexpr long long Moment = 116444736000000000LL + 17105024967891234LL;

unsigned Big16(workbench::Octets const& octets, std::size_t place) {
    return static_cast<unsigned char>(octets[place]) * 256u + static_cast<unsigned char>(octets[place + 1]);
}

// RFC 1071: the sum over a header with its checksum in place is all ones.
unsigned Sum(workbench::Octets const& octets, std::size_t begin, std::size_t end, unsigned sum) {
    for (std::size_t i = begin; i < end; i += 2) {
        sum += i + 1 < end ? Big16(octets, i) : static_cast<unsigned char>(octets[i]) * 256u;
    }
    while (sum > 0xFFFF) {
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return sum;
}

TEST(CaptureFile, BeginsWithTheHeaderOfTheFormat) {
    EXPECT_EQ(ToHex(CaptureHeader()),
              "D4 C3 B2 A1 02 00 04 00 00 00 00 00 00 00 00 00 FF FF 00 00 65 00 00 00");
}

TEST(CaptureFile, ARecordHasTheHeadersOfIpAndUdp) {
    test::Octets const data = Hex("81 0A 00 05 AB");
    auto const record = CaptureRecord(Address("192.168.1.10", 47809), Address("192.168.1.20", 47808),
                                      data.data(), static_cast<int>(data.size()), Moment, 7);
    // Seconds, microseconds, both lengths; the IPv4 header; the UDP header; the data.
    EXPECT_EQ(ToHex(record),
              "60 32 F4 65 83 0A 0C 00 21 00 00 00 21 00 00 00 "
              "45 00 00 21 00 07 40 00 40 11 B7 56 C0 A8 01 0A C0 A8 01 14 "
              "BA C1 BA C0 00 0D DA D2 "
              "81 0A 00 05 AB");
}

TEST(CaptureFile, ChecksumsAndLengthsAreRightForAnyDatagram) {
    std::mt19937 random(4);
    for (int i = 0; i < 10000; ++i) {
        test::Octets data(random() % 64);
        for (char& octet : data) {
            octet = static_cast<char>(random());
        }
        auto const record =
            CaptureRecord(Address("10.0.0.1", static_cast<unsigned short>(random())),
                          Address("10.0.0.2", static_cast<unsigned short>(random())), data.data(),
                          static_cast<int>(data.size()), Moment, static_cast<unsigned short>(i));
        std::size_t const length = 28 + data.size();
        ASSERT_EQ(record.size(), 16 + length);
        EXPECT_EQ(static_cast<unsigned char>(record[8]), length);
        EXPECT_EQ(Big16(record, 16 + 2), length);
        EXPECT_EQ(Big16(record, 36 + 4), 8 + data.size());
        EXPECT_EQ(Sum(record, 16, 36, 0), 0xFFFFu);
        EXPECT_NE(Big16(record, 36 + 6), 0u);
        unsigned const pseudo = 17 + static_cast<unsigned>(8 + data.size());
        EXPECT_EQ(Sum(record, 36, record.size(), Sum(record, 28, 36, pseudo)), 0xFFFFu);
    }
}

TEST(CaptureFile, ADatagramThatIsTooLargeIsCut) {
    sockaddr_in const here = Address("10.0.0.1", 1);
    EXPECT_EQ(CaptureRecord(here, here, nullptr, 0, Moment, 0).size(), 16u + 28);
    test::Octets const data(70000);
    auto const record = CaptureRecord(here, here, data.data(), static_cast<int>(data.size()), Moment, 0);
    EXPECT_EQ(record.size(), 16u + 65535);
}

TEST(CaptureFile, TimesBeforeTheEpochOfTheFormatAreZero) {
    sockaddr_in const here = Address("10.0.0.1", 1);
    EXPECT_EQ(ToHex(CaptureRecord(here, here, nullptr, 0, 0, 0)).substr(0, 23), "00 00 00 00 00 00 00 00");
}

class Recording : public testing::Test {
protected:
    static in_addr Own(sockaddr_in const&) { return Address("10.0.0.1", 0).sin_addr; }

    // The octets after the header of the file.
    test::Octets Recorded() const {
        std::string const text = capture.str();
        return test::Octets(text.begin() + 24, text.end());
    }

    FakeEnvironment world;
    std::ostringstream capture;
    RecordingEnvironment environment{world, capture, Own};
};

TEST_F(Recording, BeginsWithTheHeader) {
    EXPECT_EQ(capture.str().size(), 24u);
}

TEST_F(Recording, RecordsBothDirections) {
    sockaddr_in const device = Address("10.0.0.2", 47808);
    world.time = Moment;
    ASSERT_TRUE(environment.Send(3, device, "ab", 2));
    world.time += 10 * 1000;
    world.Arrives(device, "xyz");
    sockaddr_in sender{};
    char buffer[10];
    ASSERT_EQ(environment.Receive(3, sender, buffer, sizeof buffer, 100), 3);
    EXPECT_EQ(world.sent, (std::vector<std::string>{"ab"}));

    sockaddr_in const own = Address("10.0.0.1", 5003);
    auto const expected = CaptureRecord(own, device, "ab", 2, Moment, 0) +
                          CaptureRecord(device, own, "xyz", 3, Moment + 10 * 1000, 1);
    EXPECT_EQ(ToHex(Recorded()), ToHex(expected));
}

TEST_F(Recording, ADatagramThatIsNotSentOrReceivedIsNotRecorded) {
    world.sends = false;
    EXPECT_FALSE(environment.Send(3, Address("10.0.0.2", 47808), "ab", 2));
    sockaddr_in sender{};
    char buffer[10];
    EXPECT_EQ(environment.Receive(3, sender, buffer, sizeof buffer, 100), -1);
    EXPECT_EQ(capture.str().size(), 24u);
}

TEST_F(Recording, ForwardsEveryOtherCall) {
    EXPECT_EQ(environment.Open(7), 107);
    EXPECT_EQ(environment.LocalPort(3), 5003);
    environment.Close(3);
    EXPECT_EQ(world.closed, std::vector<int>{3});
    world.time = 5;
    EXPECT_EQ(environment.Now(), 5);
    EXPECT_EQ(environment.LocalTimeDiff(), 36000000000LL);
}

TEST(RouteAddress, OfThisMachineIsTheLoopback) {
    EXPECT_EQ(RouteAddress(Address("127.0.0.1", 47808)).s_addr, htonl(INADDR_LOOPBACK));
}

}  // namespace
