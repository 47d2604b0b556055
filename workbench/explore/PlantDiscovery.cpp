#include "PlantDiscovery.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include "BrowsePlant.h"
#include "Discovery.h"
#include "DiscoveryLink.h"
#include "NetworkMessages.h"
#include "StoppableLink.h"

namespace workbench {

namespace {

using standard::Interface;
using Way = standard::DiscoverySettings::Way;

// A question, and the interface from which it is asked.
struct Question {
    Interface interface;
    standard::DiscoverySettings settings;
    // Only the answers of this station are wanted; those of any without it.
    std::optional<standard::Peer> station;
};

std::string AddressOnly(std::uint32_t address) {
    std::string const text = standard::Endpoint{address, 0}.Text();
    return text.substr(0, text.find(':'));
}

std::vector<Interface> Chosen(std::vector<std::string> const& names) {
    std::vector<Interface> chosen;
    std::vector<Interface> const all = standard::Interfaces();
    for (std::string const& name : names) {
        std::size_t const before = chosen.size();
        std::copy_if(all.begin(), all.end(), std::back_inserter(chosen), [&](Interface const& one) {
            return one.name == name || AddressOnly(one.address) == name;
        });
        if (chosen.size() == before) {
            std::string known;
            for (Interface const& one : all) {
                known += (known.empty() ? "" : ", ") + one.name + " (" + AddressOnly(one.address) + ")";
            }
            throw DiscoveryFailure("\"" + name +
                                   "\" is not an interface of this machine; allowed is one of " + known);
        }
    }
    if (names.empty()) {
        std::copy_if(all.begin(), all.end(), std::back_inserter(chosen),
                     [](Interface const& one) { return !one.isLoopback; });
        chosen = chosen.empty() ? all : chosen;
    }
    if (chosen.empty()) {
        throw DiscoveryFailure("this machine has no interface with an IPv4 address");
    }
    return chosen;
}

// The interface of the option, if there is one, otherwise that of the route.
Interface Towards(std::uint32_t address, DiscoverySettings const& settings) {
    if (!settings.interfaces.empty()) {
        return Chosen(settings.interfaces).front();
    }
    auto const towards = standard::InterfaceTowards(address);
    if (!towards) {
        throw DiscoveryFailure("there is no route to " + AddressOnly(address));
    }
    return *towards;
}

bool IsBroadcast(standard::Peer const& peer) {
    std::vector<Interface> const all = standard::Interfaces();
    bool const isOfInterface = std::any_of(
        all.begin(), all.end(), [&](Interface const& one) { return one.broadcast == peer.endpoint.address; });
    return !peer.remote && (isOfInterface || (peer.endpoint.address & 0xFF) == 0xFF);
}

standard::DiscoverySettings Common(DiscoverySettings const& settings) {
    standard::DiscoverySettings common;
    if (settings.range) {
        common.range = standard::InstanceRange{settings.range->first, settings.range->second};
    }
    common.timeout = settings.wait;
    return common;
}

Question QuestionTo(standard::Peer const& peer, DiscoverySettings const& settings) {
    Question question{Towards(peer.endpoint.address, settings), Common(settings), std::nullopt};
    question.settings.way = IsBroadcast(peer) ? Way::Broadcast : Way::Unicast;
    question.settings.target = peer.endpoint;
    if (peer.remote) {
        question.settings.asksRouters = false;
        question.settings.networks = {peer.remote->network};
        question.station = peer;
    }
    return question;
}

std::vector<Question> QuestionsOf(DiscoverySettings const& settings) {
    std::vector<Question> questions;
    for (standard::Peer const& peer : settings.addresses) {
        questions.push_back(QuestionTo(peer, settings));
    }
    if (settings.bbmd) {
        Question question{Towards(settings.bbmd->address, settings), Common(settings), std::nullopt};
        question.settings.way = Way::ForeignDevice;
        question.settings.target = *settings.bbmd;
        questions.push_back(question);
    }
    if (!questions.empty()) {
        return questions;
    }
    for (Interface const& one : Chosen(settings.interfaces)) {
        if (one.broadcast) {
            Question question{one, Common(settings), std::nullopt};
            question.settings.target = {*one.broadcast, settings.port};
            questions.push_back(question);
        }
    }
    if (questions.empty()) {
        throw DiscoveryFailure("no interface has a broadcast address; give the addresses of devices");
    }
    return questions;
}

// Asks all questions at the same time, each from a socket of its own.
class Asking {
public:
    Asking(std::vector<Question> allQuestions, DiscoverySettings const& discoverySettings)
        : questions(std::move(allQuestions)), settings(discoverySettings), results(questions.size()) {}

    DiscoveredPlant Run() {
        std::vector<std::unique_ptr<standard::DiscoveryLink>> links;
        for (Question const& question : questions) {
            links.push_back(std::make_unique<standard::DiscoveryLink>(question.interface, settings.port));
        }
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < questions.size(); ++i) {
            threads.emplace_back([this, i, &link = *links[i]] { results[i] = Ask(questions[i], link); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        DiscoveredPlant plant = PlantOf(results);
        for (std::size_t i = 0; i < questions.size(); ++i) {
            bool const isFirst =
                std::none_of(questions.begin(), questions.begin() + static_cast<std::ptrdiff_t>(i),
                             [&](Question const& earlier) {
                                 return earlier.interface.address == questions[i].interface.address;
                             });
            // A second socket of this program on an interface has limits that the first one does not have.
            AddNotes(results[i], isFirst ? links[i]->Limits() : std::vector<std::string>(), plant);
        }
        return plant;
    }

private:
    standard::DiscoveryResult Ask(Question const& question, standard::Link& socket) {
        StoppableLink link(socket, settings.isStopped);
        standard::Discovery discovery(link, question.settings);
        discovery.OnDevice([this](standard::FoundDevice const&) { ShowCount(); });
        standard::DiscoveryResult result = discovery.Run();
        if (question.station) {
            result.devices.erase(
                std::remove_if(result.devices.begin(), result.devices.end(),
                               [&](auto const& found) { return !IsAmong(found.peer, *question.station); }),
                result.devices.end());
        }
        return result;
    }

    void ShowCount() {
        std::lock_guard<std::mutex> const lock(mutex);
        ++count;
        settings.progress("asking: " + std::to_string(count) + (count == 1 ? " device" : " devices"));
    }

    void AddNotes(standard::DiscoveryResult const& result, std::vector<std::string> const& limits,
                  DiscoveredPlant& plant) const {
        plant.notes.insert(plant.notes.end(), limits.begin(), limits.end());
        if (!result.failure.empty() && questions.size() == 1 && result.devices.empty()) {
            throw DiscoveryFailure(result.failure);
        }
        if (!result.failure.empty()) {
            plant.notes.push_back(result.failure);
        }
        for (standard::DiscoveryResult::Rejected const& rejected : result.rejected) {
            plant.notes.push_back("The router " + rejected.router.Text() + " does not reach the network " +
                                  std::to_string(rejected.network) + " (" +
                                  standard::RouterRejectText(rejected.reason) + ").");
        }
        if (result.malformedCount > 0) {
            plant.notes.push_back(std::to_string(result.malformedCount) +
                                  " I-Am cannot be read; the first came from " +
                                  AddressText(result.malformed.front().peer) + ".");
        }
        if (result.hasReachedLimit) {
            plant.notes.push_back("A limit was reached; there may be more devices.");
        }
    }

    std::vector<Question> const questions;
    DiscoverySettings const& settings;
    std::vector<standard::DiscoveryResult> results;
    std::mutex mutex;
    std::size_t count = 0;
};

}  // namespace

DiscoveredPlant DiscoverPlant(DiscoverySettings const& settings) try {
    DiscoveredPlant plant = Asking(QuestionsOf(settings), settings).Run();
    std::vector<BrowseTarget> targets;
    for (MarkedDevice const& device : plant.devices) {
        targets.push_back({*device.record.peer, device.announced});
    }
    BrowseSettings reading = settings.reading;
    reading.detail = Detail::Shown;
    reading.hasObjects = false;
    TakeRecords(plant, BrowsePlant(targets, reading, settings.isStopped, settings.progress));
    plant.isStopped = plant.isStopped || settings.isStopped();
    return plant;
} catch (std::system_error const& error) {
    throw DiscoveryFailure(std::string("the network cannot be used: ") + error.what());
}

}  // namespace workbench
