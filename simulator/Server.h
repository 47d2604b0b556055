#pragma once

#include <deque>
#include <iosfwd>

#include "Clock.h"
#include "CommandLine.h"
#include "Station.h"
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
    // `stopHandle` becomes readable on a signal.
    void run(int stopHandle);

private:
    struct Place {
        Place(Device device, Endpoint const& local) : station(std::move(device)), socket(local) {}

        Station station;
        UdpSocket socket;
    };

    void serve(Place& place);
    void send(Place& place, std::vector<Datagram> const& datagrams);
    bool isOver() const;

    std::deque<Place> m_places;  // a station cannot be moved
    CommandLine const m_options;
    Clock const& m_clock;
};

}  // namespace simulator
