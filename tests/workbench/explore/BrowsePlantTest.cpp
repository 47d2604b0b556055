#include "BrowsePlant.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "UdpLink.h"

using namespace workbench;
using standard::UdpLink;

namespace {

// Rejects every request, or does not answer, on a socket of the loopback network, and counts the requests.
class RejectingDevice {
public:
    explicit RejectingDevice(bool isSilentToAll = false)
        : isSilent(isSilentToAll), thread([this] { Run(); }) {}
    ~RejectingDevice() {
        stop = true;
        thread.join();
    }

    standard::Endpoint Address() const { return link.Local(); }
    unsigned Requests() const { return requests; }

private:
    void Run() {
        while (!link.IsStopped()) {
            auto const datagram = link.Receive(link.Now() + std::chrono::seconds(1));
            if (datagram && datagram->octets.size() > 8) {
                ++requests;
            }
            if (datagram && datagram->octets.size() > 8 && !isSilent) {
                link.Send({datagram->peer, {'\x81', '\x0A', 0, 9, 1, 0, '\x60', datagram->octets[8], 0}});
            }
        }
    }

    bool const isSilent;
    std::atomic<bool> stop = false;
    std::atomic<unsigned> requests = 0;
    UdpLink link{{0x7F000001, 0}, &stop};
    std::thread thread;
};

}  // namespace

TEST(BrowsePlant, DevicesAtOneEndpointShareItsRate) {
    RejectingDevice const device;
    BrowseSettings settings;
    settings.rate = 50;
    settings.hasObjects = false;
    std::vector<BrowseTarget> targets;
    for (std::uint32_t instance = 1; instance <= 10; ++instance) {
        targets.push_back({{device.Address(), std::nullopt}, instance});
    }
    auto const begin = std::chrono::steady_clock::now();
    BrowsePlant(
        targets, settings, [] { return false; }, [](std::string const&) {});
    auto const duration = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(device.Requests(), targets.size());
    EXPECT_GE(duration, (device.Requests() - 1) * std::chrono::milliseconds(20));
}

TEST(BrowsePlant, AnAddressThatDoesNotAnswerIsNotAskedForAllItsDevices) {
    RejectingDevice const device(true);
    BrowseSettings settings;
    settings.client.timeout = std::chrono::milliseconds(20);
    settings.client.retries = 0;
    settings.hasObjects = false;
    std::vector<BrowseTarget> const targets(500, {{device.Address(), std::nullopt}, 7});
    auto const records = BrowsePlant(
        targets, settings, [] { return false; }, [](std::string const&) {});
    EXPECT_LT(device.Requests(), 20u);
    ASSERT_EQ(records.size(), targets.size());
    EXPECT_EQ(records.back().peer, targets.back().peer);
    EXPECT_FALSE(records.back().isComplete);
    EXPECT_EQ(records.back().notes.at(0),
              "not requested, since other devices at this address did not answer");
}
