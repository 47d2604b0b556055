#include "MqttOutlet.h"

#include <poll.h>

#include <algorithm>
#include <exception>
#include <random>
#include <utility>

#include "BackgroundThread.h"
#include "NameLookup.h"
#include "Printable.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

// A publisher is asked at least so often, for what has waited for its time.
constexpr std::chrono::milliseconds LongestTurn{100};
// For the last messages of a publisher, besides LongestEnd for the values before.
constexpr std::chrono::seconds LongestFarewell{1};
// A broker has been slow, or fast again, for so long before that is reported.
constexpr std::chrono::seconds SpeedPatience{5};
// So many connections after each other that break soon have a reason.
constexpr unsigned ManyShortConnections = 2;

long long Now() {
    return dorvel::Environment().Now();
}

}  // namespace

MqttOutlet::MqttOutlet(BrokerSettings const& brokerSettings, std::optional<TlsFiles> const& tlsFiles,
                       MakePublisher const& makePublisher, PlantBoard const& plantBoard, LogBuffer& runLog)
    : settings(brokerSettings),
      name(AddressText(settings.address)),
      board(plantBoard),
      status("mqtt", runLog),
      publisher(makePublisher(status)),
      tls(tlsFiles ? std::make_unique<TlsContext>(*tlsFiles, settings.address.host) : nullptr),
      connection(settings, tls.get()),
      backoff(std::random_device()()),
      blocks(board.All()) {}

MqttOutlet::~MqttOutlet() {
    End();
}

void MqttOutlet::Start() {
    status.Set(OutletHealth::Starting, "connecting to " + name);
    thread = StartBackgroundThread([this] { Run(); });
}

void MqttOutlet::Follow(SharedSnapshot const&) {
    if (takesCycles && !isWoken.exchange(true)) {
        wake.Notify();
    }
}

void MqttOutlet::End() {
    isEnding = true;
    wake.Notify();
    if (thread.joinable()) {
        thread.join();
    }
}

void MqttOutlet::Run() {
    try {
        Attempts();
    } catch (std::exception const& mistake) {
        takesCycles = false;
        connection.Close();
        status.Set(OutletHealth::Failed, std::string("stopped: ") + mistake.what());
    }
}

void MqttOutlet::Attempts() {
    while (!isEnding) {
        Milliseconds const lasted = OneConnection();
        if (!isEnding) {
            Pause(backoff.NextAfter(lasted));
        }
    }
}

MqttOutlet::Milliseconds MqttOutlet::OneConnection() {
    if (!Connect()) {
        return Milliseconds(0);
    }
    Clock::time_point const begun = Clock::now();
    BeginPublishing();
    while (!isEnding && IsConnected()) {
        Publish();
        WatchSpeed();
        connection.Serve(LongestTurn, wake.Handle());
        PassOn();
        CountSent();
    }
    takesCycles = false;
    auto const lasted = std::chrono::duration_cast<Milliseconds>(Clock::now() - begun);
    if (isEnding) {
        Finish();
    } else {
        ReportLost(lasted);
    }
    publisher->Disconnected();
    connection.Close();
    return lasted;
}

std::vector<std::string> MqttOutlet::LookUp() {
    NameLookup lookup(settings.address.host);
    while (!isEnding) {
        if (auto const result = lookup.Take()) {
            if (result->addresses.empty()) {
                Report(LookupFailure(result->error, result->systemError, settings.address.host));
            }
            return result->addresses;
        }
        pollfd waits[2] = {{wake.Handle(), POLLIN, 0}, {lookup.Handle(), POLLIN, 0}};
        poll(waits, 2, LongestTurn.count());
        wake.Take();
    }
    return {};
}

bool MqttOutlet::Connect() {
    std::vector<std::string> const addresses = LookUp();
    for (std::string const& address : addresses) {
        connection.Begin(address, publisher->Will(Now()), publisher->Subscriptions());
        while (!isEnding && connection.IsBeginning()) {
            connection.Serve(LongestTurn, wake.Handle());
            wake.Take();
        }
        if (isEnding || IsConnected()) {
            return IsConnected();
        }
    }
    if (!addresses.empty() && !isEnding) {
        Report(connection.Failure());
    }
    return false;
}

void MqttOutlet::BeginPublishing() {
    if (wasConnected) {
        status.Count("reconnects");
    }
    wasConnected = true;
    isSlow = false;
    hadRoom = true;
    speedChanged = Clock::now();
    ReportConnected();
    publisher->Connected(Now(), connection);
    takesCycles = true;
}

void MqttOutlet::Publish() {
    // In this order: a cycle that comes after the flag is down wakes again.
    wake.Take();
    isWoken = false;
    if (board.Generation() != generation) {
        generation = board.Generation();
        blocks = board.All();
    }
    publisher->Publish(blocks, Now(), connection);
}

void MqttOutlet::PassOn() {
    for (ReceivedMessage const& message : connection.TakeReceived()) {
        publisher->Receive(message, Now(), connection);
    }
}

void MqttOutlet::CountSent() {
    if (std::size_t const sent = connection.TakeSentCount()) {
        status.Count("messages", sent);
    }
}

// After the publisher has sent what it has: without room then, something waits.
void MqttOutlet::WatchSpeed() {
    if (!IsConnected()) {
        return;
    }
    if (connection.HasRoom() != hadRoom) {
        hadRoom = !hadRoom;
        speedChanged = Clock::now();
    }
    if (isSlow == hadRoom && Clock::now() - speedChanged > SpeedPatience) {
        isSlow = !hadRoom;
        if (isSlow) {
            status.Set(OutletHealth::Waiting,
                       name + ": the broker is slow; of each variable only the newest value is kept for it");
        } else {
            ReportConnected();
        }
    }
}

void MqttOutlet::Finish() {
    Clock::time_point const latest = Clock::now() + LongestEnd;
    do {
        Publish();
        connection.Serve(Milliseconds(0), -1);
    } while (WaitsUntil(latest));
    publisher->End(Now(), connection);
    while (WaitsUntil(latest + LongestFarewell)) {
    }
    CountSent();
    connection.Close();
}

// One turn of waiting for the broker; false when it has taken everything, has gone, or the time is over.
bool MqttOutlet::WaitsUntil(Clock::time_point latest) {
    if (!IsConnected() || connection.OnTheWay().Messages() == 0 || Clock::now() >= latest) {
        return false;
    }
    connection.Serve(LongestTurn, -1);
    return true;
}

void MqttOutlet::ReportConnected() {
    std::string text = "connected to " + name + (tls ? " with TLS" : "");
    for (std::string const& filter : connection.RefusedFilters()) {
        text += "; the broker refuses the subscription to " + tools::Quoted(filter) +
                ", so that no commands come";
    }
    status.Set(OutletHealth::Good, text);
}

void MqttOutlet::ReportLost(Milliseconds lasted) {
    shortConnections = lasted < Backoff::Steady ? shortConnections + 1 : 0;
    ConnectionFailure failure = connection.Failure();
    if (shortConnections >= ManyShortConnections) {
        failure.text += ", again soon after it was there; does another program use the client id " +
                        tools::Quoted(settings.clientId) +
                        "? Give each workbench a node of its own (--mqtt-node)";
    }
    Report(failure);
}

void MqttOutlet::Report(ConnectionFailure const& failure) {
    status.Set(failure.health, name + ": " + failure.text);
}

void MqttOutlet::Pause(Milliseconds pause) {
    Clock::time_point const end = Clock::now() + pause;
    while (!isEnding && Clock::now() < end) {
        auto const left = std::chrono::duration_cast<Milliseconds>(end - Clock::now()) + Milliseconds(1);
        pollfd wait = {wake.Handle(), POLLIN, 0};
        poll(&wait, 1, static_cast<int>(std::min<Milliseconds::rep>(left.count(), 1000)));
        wake.Take();
    }
}

}  // namespace workbench
