#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Backoff.h"
#include "BrokerConnection.h"
#include "Outlet.h"
#include "OutletParts.h"
#include "OutletStatus.h"
#include "PlantBoard.h"
#include "Publisher.h"
#include "TlsContext.h"
#include "WakeEvent.h"

namespace workbench {

// Publishes a run at a broker, whatever happens to the connection: one thread connects, publishes, and tries
// again. Cycles only wake it.
class MqttOutlet : public Outlet {
public:
    using MakePublisher = std::function<std::unique_ptr<Publisher>(OutletStatus& status)>;

    // How long End waits for the broker to take what is left.
    static constexpr std::chrono::seconds LongestEnd{2};

    // The board and the log must outlive the outlet. std::runtime_error for a file of TLS that cannot be
    // used.
    MqttOutlet(BrokerSettings const& brokerSettings, std::optional<TlsFiles> const& tlsFiles,
               MakePublisher const& makePublisher, PlantBoard const& plantBoard, LogBuffer& runLog);
    ~MqttOutlet() override;

    void Start() override;
    void Follow(SharedSnapshot const& block) override;
    void End() override;
    OutletState State() const override { return status.State(); }

private:
    using Milliseconds = std::chrono::milliseconds;
    using Clock = std::chrono::steady_clock;

    void Run();
    void Attempts();
    // Returns how long the connection was there; 0 if it did not come.
    Milliseconds OneConnection();
    std::vector<std::string> LookUp();
    bool Connect();
    bool IsConnected() const { return connection.CurrentPhase() == BrokerConnection::Phase::Connected; }
    void BeginPublishing();
    void Publish();
    void PassOn();
    void CountSent();
    void WatchSpeed();
    void Finish();
    bool WaitsUntil(Clock::time_point latest);
    void ReportConnected();
    void ReportLost(Milliseconds lasted);
    void Report(ConnectionFailure const& failure);
    void Pause(Milliseconds pause);

    BrokerSettings settings;
    std::string name;  // of the broker
    PlantBoard const& board;
    OutletStatus status;
    std::unique_ptr<Publisher> publisher;
    std::unique_ptr<TlsContext> tls;
    BrokerConnection connection;
    Backoff backoff;

    unsigned long long generation = 0;
    std::vector<SharedSnapshot> blocks;
    Clock::time_point speedChanged;  // when there was room again, or no longer
    bool hadRoom = true;
    bool isSlow = false;            // the broker, as it is reported
    unsigned shortConnections = 0;  // one after the other
    bool wasConnected = false;

    WakeEvent wake;
    std::atomic<bool> isWoken{false};
    std::atomic<bool> takesCycles{false};
    std::atomic<bool> isEnding{false};
    std::thread thread;
};

}  // namespace workbench
