#pragma once

#include <string>
#include <vector>

#include "Snapshot.h"

namespace workbench {

struct Message {
    std::string topic;
    std::string payload;
    int qos = 0;  // 0 or 1
    bool isRetained = false;
};

struct ReceivedMessage {
    std::string topic;
    std::string payload;
    bool isRetained = false;
};

// Where messages go: a connection to a broker, or a test.
class MessageSink {
public:
    virtual ~MessageSink() = default;
    // False while so much is on its way that more has to wait. A publisher then sends nothing, and the newest
    // values at its next turn.
    virtual bool HasRoom() const = 0;
    virtual void Send(Message message) = 0;
};

// Makes messages of the cycles of a run. It knows no broker and no clock; times are file times. What has not
// been sent is the difference between the newest cycle and what was sent last, so that a broker which is away
// or slow costs no memory and the newest value of each variable is never lost. For one thread at a time.
class Publisher {
public:
    virtual ~Publisher() = default;

    // What the broker shall publish when this connection breaks. Asked before each attempt to connect.
    virtual Message Will(long long now) = 0;
    // Topic filters, subscribed to with quality of service 1 after each connection.
    virtual std::vector<std::string> Subscriptions() const = 0;
    // A connection is there and its subscriptions are confirmed; what the broker knew before does not
    // count.
    virtual void Connected(long long now, MessageSink& sink) = 0;
    // The connection has gone. Nothing is sent until the next one.
    virtual void Disconnected() = 0;
    // What has changed since it was sent. `blocks` are the newest snapshots, in the order of the project. To
    // be called after every cycle and at least ten times a second.
    virtual void Publish(std::vector<SharedSnapshot> const& blocks, long long now, MessageSink& sink) = 0;
    virtual void Receive(ReceivedMessage const& message, long long now, MessageSink& sink) = 0;
    // The run ends: what others shall know before the connection is closed in order.
    virtual void End(long long now, MessageSink& sink) = 0;
};

}  // namespace workbench
