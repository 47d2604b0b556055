#pragma once

#include <deque>
#include <iosfwd>

#include "Clock.h"
#include "CommandInput.h"
#include "CommandLine.h"
#include "DeliveryQueue.h"
#include "FaultyStation.h"
#include "UdpSocket.h"

namespace simulator {

// The devices of one file on their sockets.
class Server {
public:
    // Opens a socket for each device; throws std::system_error. The clock must outlive the server.
    Server(std::vector<Device> devices, CommandLine const& commandLine, Clock const& deviceClock);

    // One line for each device: ready NAME ADDRESS:PORT
    void Announce(std::ostream& out) const;
    // Serves until SIGINT or SIGTERM, or until the end of the duration or of standard input, as the options
    // state. `stopHandle` becomes readable on a signal. Carries out the commands from standard input
    // (FaultCommand.h); answers go to standard output, mistakes to standard error.
    void Run(int stopHandle);

private:
    struct Place {
        Place(Device device, Endpoint const& local) : station(std::move(device)), socket(local) {}

        FaultyStation station;
        UdpSocket socket;
        std::optional<UdpSocket> elsewhere;  // opened when first needed
        DeliveryQueue waiting;
    };

    void Serve(Place& place);
    void Send(Place& place, std::vector<Delivery> deliveries);
    void SendNow(Place& place, Delivery const& delivery);
    void Obey(std::vector<std::string> const& lines);
    int WaitingTime() const;
    bool IsOver() const;

    std::deque<Place> places;  // a station cannot be moved
    CommandLine const options;
    Clock const& clock;
};

}  // namespace simulator
