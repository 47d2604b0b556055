#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "VirtualDataLink/IUdpSocket.h"

namespace test {

// The datagrams that a scripted socket delivers, and a record of its calls. It outlives the socket, which a
// layer owns.
struct UdpScript {
    std::deque<VirtualDataLink::Packet> incoming;
    std::vector<VirtualDataLink::Packet> sent;
    VirtualDataLink::NetAddress resolved;
    std::vector<std::string> names;
    std::vector<int> timeouts;
    int destroyed = 0;
};

// Delivers the script's datagrams in order; after the last one it throws "script ends".
class ScriptedUdpSocket : public VirtualDataLink::IUdpSocket {
public:
    explicit ScriptedUdpSocket(UdpScript& udpScript) : script(udpScript) {}
    ~ScriptedUdpSocket() override { ++script.destroyed; }

    VirtualDataLink::NetAddress ResolveHostName(char const* name) override {
        script.names.emplace_back(name);
        return script.resolved;
    }
    void Send(VirtualDataLink::Packet packet) override { script.sent.push_back(std::move(packet)); }
    VirtualDataLink::Packet Receive() override {
        if (script.incoming.empty()) {
            throw std::out_of_range("script ends");
        }
        VirtualDataLink::Packet packet = std::move(script.incoming.front());
        script.incoming.pop_front();
        return packet;
    }
    void SetTimeout(int timeout) override { script.timeouts.push_back(timeout); }

private:
    UdpScript& script;
};

// The text of the std::runtime_error that the action throws, "" if it throws none.
template <typename Action>
std::string RuntimeErrorOf(Action action) {
    try {
        action();
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "";
}

}  // namespace test
