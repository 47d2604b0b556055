#include "BrowsePlant.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "UdpLink.h"

using namespace workbench;
using standard::UdpLink;

namespace {

// Rejects every request, on a socket of the loopback network, and counts them.
class RejectingDevice {
public:
    RejectingDevice() : thread([this] { Run(); }) {}
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
                link.Send({datagram->peer, {'\x81', '\x0A', 0, 9, 1, 0, '\x60', datagram->octets[8], 0}});
            }
        }
    }

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
