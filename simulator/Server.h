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
    Server(std::vector<Device> devices, CommandLine const& options, Clock const& clock);

    // One line for each device: ready NAME ADDRESS:PORT
    void announce(std::ostream& out) const;
    // Serves until SIGINT, SIGTERM, the end of the duration or of standard input, whichever is asked for.
    // `stopHandle` becomes readable on a signal. Carries out the commands that come on standard input
    // (FaultCommand.h) and answers them on standard output, mistakes on standard error.
    void run(int stopHandle);

private:
    struct Place {
        Place(Device device, Endpoint const& local) : station(std::move(device)), socket(local) {}

        FaultyStation station;
        UdpSocket socket;
        std::optional<UdpSocket> elsewhere;  // opened when first needed
        DeliveryQueue waiting;
    };

    void serve(Place& place);
    void send(Place& place, std::vector<Delivery> deliveries);
    void sendNow(Place& place, Delivery const& delivery);
    void obey(std::vector<std::string> const& lines);
    int waitingTime() const;
    bool isOver() const;

    std::deque<Place> m_places;  // a station cannot be moved
    CommandLine const m_options;
    Clock const& m_clock;
};

}  // namespace simulator
