#include "BrowsePlant.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <tuple>
#include <utility>

#include "AddressArgument.h"
#include "DeviceBrowser.h"
#include "StoppableLink.h"
#include "UdpLink.h"

namespace workbench {

namespace {

constexpr std::size_t MostThreads = 8;
// Devices at one address that do not answer until the others there are not requested: an address that
// announces thousands of instances would cost hours.
constexpr std::ptrdiff_t MostSilent = 2;

// The devices at one endpoint, which is a device or a router, by their positions among the targets.
using Group = std::vector<std::size_t>;

std::vector<Group> GroupsOf(std::vector<BrowseTarget> const& targets) {
    std::map<standard::Endpoint, Group> byEndpoint;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        byEndpoint[targets[i].peer.endpoint].push_back(i);
    }
    std::vector<Group> groups;
    for (auto& entry : byEndpoint) {
        groups.push_back(std::move(entry.second));
    }
    return groups;
}

// Reads the groups, each thread one after the other.
class PlantReading {
public:
    PlantReading(std::vector<BrowseTarget> const& plantTargets, BrowseSettings const& browseSettings,
                 std::function<bool()> const& stopFunction,
                 std::function<void(std::string const&)> const& show)
        : targets(plantTargets),
          settings(browseSettings),
          isStopped(stopFunction),
          progress(show),
          groups(GroupsOf(plantTargets)),
          records(plantTargets.size()) {}

    std::vector<DeviceRecord> Run() {
        std::vector<std::unique_ptr<standard::UdpLink>> sockets;
        for (std::size_t i = 0; i < std::min(groups.size(), MostThreads); ++i) {
            sockets.push_back(std::make_unique<standard::UdpLink>(standard::Endpoint{}));
        }
        std::vector<std::thread> threads;
        for (auto const& socket : sockets) {
            threads.emplace_back([this, &socket] { Work(*socket); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return std::move(records);
    }

private:
    void Work(standard::Link& socket) {
        StoppableLink link(socket, isStopped);
        for (std::size_t next = nextGroup++; next < groups.size(); next = nextGroup++) {
            std::vector<standard::Peer> silent;  // each as often as it was silent
            for (std::size_t const position : groups[next]) {
                standard::Peer const& peer = targets[position].peer;
                if (std::count(silent.begin(), silent.end(), peer) >= MostSilent) {
                    records[position] = NotRequested(peer);
                    continue;
                }
                if (position != groups[next].front()) {
                    AwaitTurn(link, peer);
                }
                standard::Link::Time const begin = link.Now();
                records[position] = Read(link, targets[position]);
                bool const isRead = !records[position].device.properties.empty();
                if (!isRead && link.Now() - begin >= settings.client.timeout) {
                    silent.push_back(peer);
                }
            }
        }
    }

    DeviceRecord NotRequested(standard::Peer const& peer) {
        ++finished;
        DeviceRecord record;
        record.peer = peer;
        record.isComplete = false;
        record.notes.push_back("not requested, since other devices at this address did not answer");
        return record;
    }

    // A device has a client of its own, which does not know when the one before at this endpoint was asked.
    void AwaitTurn(standard::Link& link, standard::Peer const& peer) const {
        standard::ClientSettings const paced = PacedClient(settings);
        standard::Link::Time const turn = link.Now() + (peer.remote ? paced.routedSpacing : paced.spacing);
        while (link.Now() < turn && !link.IsStopped()) {
            link.Receive(turn);
        }
    }

    DeviceRecord Read(standard::Link& link, BrowseTarget const& target) {
        BrowseSettings own = settings;
        own.progress = [this, &target](BrowseProgress const& step) {
            Show(", " + AddressText(target.peer) + ": " + ProgressText(step));
        };
        DeviceRecord record = DeviceBrowser(link, own).Browse(target.peer, target.instance);
        ++finished;
        Show("");
        return record;
    }

    void Show(std::string const& device) {
        std::lock_guard<std::mutex> const lock(mutex);
        progress(std::to_string(finished) + " of " + std::to_string(targets.size()) + " devices" + device);
    }

    std::vector<BrowseTarget> const& targets;
    BrowseSettings const& settings;
    std::function<bool()> const& isStopped;
    std::function<void(std::string const&)> const& progress;
    std::vector<Group> const groups;
    std::atomic<std::size_t> nextGroup{0};
    std::atomic<std::size_t> finished{0};
    std::mutex mutex;
    std::vector<DeviceRecord> records;
};

auto KeyOf(DeviceRecord const& record) {
    standard::Peer const peer = record.peer.value_or(standard::Peer{});
    standard::NetworkAddress const remote = peer.remote.value_or(standard::NetworkAddress{});
    return std::make_tuple(record.Instance(), peer.endpoint.address, peer.endpoint.port, remote.network,
                           remote.mac);
}

}  // namespace

std::vector<DeviceRecord> BrowsePlant(std::vector<BrowseTarget> const& targets,
                                      BrowseSettings const& settings, std::function<bool()> const& isStopped,
                                      std::function<void(std::string const&)> const& progress) {
    return PlantReading(targets, settings, isStopped, progress).Run();
}

Inventory InventoryOf(std::vector<DeviceRecord> records) {
    std::stable_sort(records.begin(), records.end(), [](DeviceRecord const& left, DeviceRecord const& right) {
        return KeyOf(left) < KeyOf(right);
    });
    return {std::move(records)};
}

}  // namespace workbench
