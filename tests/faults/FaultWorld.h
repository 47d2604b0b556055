#pragma once

#include <functional>
#include <list>
#include <map>
#include <utility>
#include <vector>

#include "FaultyStation.h"
#include "dorvelshare/HostEnvironment.h"

namespace test {

// A network of simulated devices for the driver, in virtual time. It replaces the operating system while it
// exists; only one may exist at a time. Waiting advances the clock, and the clock drives the devices; nothing
// sleeps. For one thread.
class FaultWorld final : public dorvel::HostEnvironment {
public:
    // Datagrams that a socket keeps until they are received; further ones are lost, as with an operating
    // system.
    static constexpr std::size_t SocketRoom = 64;
    // The interval, in milliseconds, at which the devices get the time.
    static constexpr long long TickPeriod = 250;

    // Throws std::logic_error while another one exists.
    FaultWorld();
    ~FaultWorld() override { dorvel::SetEnvironment(nullptr); }
    FaultWorld(FaultWorld const&) = delete;
    FaultWorld& operator=(FaultWorld const&) = delete;

    // Places a device at an address and replaces one that is there.
    simulator::FaultyStation& Place(simulator::Endpoint const& endpoint, simulator::Device device);

    // Milliseconds since construction.
    long long Elapsed() const { return elapsed; }
    // Lets time pass.
    void Pass(long long milliseconds) { AdvanceTo(elapsed + milliseconds); }

    // Cuts a device off after this number of further datagrams, or Never. This ends an exchange that the
    // device would keep alive without end.
    static constexpr long long Never = -1;
    void CutOffAfter(simulator::Endpoint const& peer, long long datagrams) {
        cutOffPeer = peer;
        sendsLeft = datagrams;
    }
    bool IsCutOff() const { return sendsLeft == 0; }

    // The transit time of a device's answers in milliseconds, in addition to its own delay.
    void SetRoundTrip(simulator::Endpoint const& peer, long long milliseconds);
    // Pauses a device from now on for this time. It answers the requests of that time afterwards.
    void Hold(simulator::Endpoint const& peer, long long milliseconds);

    // Sends an unsolicited datagram from a device to the socket that sent to it last.
    void Inject(simulator::Endpoint const& from, long long delay, simulator::Octets octets);
    // `watcher` is called for every datagram of the driver, before it is answered.
    void Watch(std::function<void()> watcher) { onSend = std::move(watcher); }

    // Records every datagram of the driver to this address.
    void Record(simulator::Endpoint const& peer) { recordedPeer = peer; }
    std::vector<simulator::Octets> TakeRecord() { return std::exchange(record, {}); }

    // The number of datagrams in transit or in a socket, including those of a held device.
    std::size_t Waiting() const;
    int OpenSockets() const { return static_cast<int>(sockets.size()); }

    int Open(unsigned short port) override;
    unsigned short LocalPort(int handle) override { return sockets.at(handle).port; }
    void Close(int handle) override { sockets.erase(handle); }
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;
    long long Now() override;
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }

private:
    struct Arrival {
        simulator::Endpoint sender;
        unsigned short port = 0;  // of the driver
        simulator::Octets octets;
    };
    struct Socket {
        unsigned short port = 0;
        simulator::Endpoint lastPeer;
        std::list<Arrival> waiting;
    };
    struct Device {
        Device(simulator::Endpoint const& where, simulator::Device what)
            : endpoint(where), station(std::move(what)) {}

        simulator::Endpoint endpoint;
        simulator::FaultyStation station;
        long long roundTrip = 0;
        long long heldUntil = 0;
        std::vector<simulator::Datagram> held;
    };

    static constexpr unsigned short FirstFreePort = 50000;

    bool IsTaken(unsigned short port) const;
    simulator::Moment Moment() const;
    void AdvanceTo(long long time);
    long long NextEvent() const;
    void HandleEvents();
    Device& At(simulator::Endpoint const& endpoint);
    void Deliver(Device const& from, std::vector<simulator::Delivery> deliveries);
    void Arrive(Arrival arrival);

    std::list<Device> devices;  // a station cannot be moved
    std::map<int, Socket> sockets;
    std::multimap<long long, Arrival> underWay;  // by the time of arrival
    simulator::Endpoint recordedPeer;
    std::vector<simulator::Octets> record;
    std::function<void()> onSend;
    int nextHandle = 0;
    unsigned short nextFreePort = FirstFreePort;
    long long elapsed = 0;
    long long nextTick = TickPeriod;
    simulator::Endpoint cutOffPeer;
    long long sendsLeft = Never;
};

}  // namespace test
