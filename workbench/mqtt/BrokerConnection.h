#pragma once

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "BrokerAddress.h"
#include "ConnectionFailure.h"
#include "InFlight.h"
#include "LoginFile.h"
#include "Publisher.h"
#include "TlsContext.h"

struct mosquitto;
struct mosquitto_message;

namespace workbench {

struct BrokerSettings {
    BrokerAddress address;
    std::string clientId;
    BrokerLogin login;
    std::chrono::seconds keepAlive{30};
};

// One connection to a broker after the other, with MQTT 3.1.1 and a clean session. It has no thread: Serve()
// does all the work. What was not sent when a connection ends is dropped. For one thread.
class BrokerConnection : public MessageSink {
public:
    enum class Phase {
        Closed,
        Connecting,   // TCP, TLS and MQTT
        Subscribing,  // the subscriptions are not all confirmed yet
        Connected
    };

    // The longest time from Begin until Connected.
    static constexpr std::chrono::seconds LongestBegin{15};

    // Without TLS the context is null; it must outlive the connection.
    BrokerConnection(BrokerSettings const& brokerSettings, TlsContext* tlsContext);
    BrokerConnection(BrokerConnection const&) = delete;
    BrokerConnection& operator=(BrokerConnection const&) = delete;
    ~BrokerConnection() override;

    // Begins to connect to an address of the broker, as numbers. Does not block.
    void Begin(std::string const& address, Message const& will, std::vector<std::string> const& filters);
    // Waits until there is something to do, the handle can be read, or the time is over, and does it.
    void Serve(std::chrono::milliseconds longest, int wakeHandle);
    // Closes the connection at once. In order, so that the broker does not publish the will.
    void Close();

    Phase CurrentPhase() const { return phase; }
    bool IsBeginning() const { return phase == Phase::Connecting || phase == Phase::Subscribing; }
    // Why the connection is closed.
    ConnectionFailure const& Failure() const { return failure; }
    // The subscriptions that the broker refuses; they are confirmed all the same.
    std::vector<std::string> const& RefusedFilters() const { return refusedFilters; }
    // What has come since the last call.
    std::vector<ReceivedMessage> TakeReceived();
    InFlight const& OnTheWay() const { return inFlight; }
    // Messages that the broker has taken since the last call.
    std::size_t TakeSentCount();

    bool HasRoom() const override;
    // A message that cannot be sent at all, such as one whose topic has a NUL, is dropped.
    void Send(Message message) override;

private:
    using Clock = std::chrono::steady_clock;
    struct Freed {
        void operator()(mosquitto* used) const;
    };
    struct Callbacks;

    void Prepare(Message const& will);
    void Turn(short events);
    void CheckTimes();
    void Subscribe();
    void Fail(ConnectionFailure const& reason);
    void FailOf(int code);
    void Drop();
    void Answered(int returnCode);
    void Subscribed(int id, bool isRefused);
    void Published(int id);
    void Logged(std::string const& line);

    BrokerSettings settings;
    TlsContext* tls;
    std::unique_ptr<mosquitto, Freed> handle;
    Phase phase = Phase::Closed;
    ConnectionFailure failure;
    ConnectionFailure handshake;
    int socketError = 0;  // in the current turn
    std::vector<std::string> filters;
    std::vector<std::pair<int, std::string>> unconfirmed;  // subscriptions by their message ids
    std::vector<std::string> refusedFilters;
    std::vector<ReceivedMessage> received;
    InFlight inFlight;
    bool isSending = false;
    std::vector<int> sentAtOnce;  // while isSending, before the id of the message is known
    std::size_t sentCount = 0;
    Clock::time_point begun;
    Clock::time_point moved;  // when the broker took a message last, or had none to take
};

}  // namespace workbench
