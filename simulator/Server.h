#pragma once

#include <deque>
#include <iosfwd>
#include <memory>

#include "Clock.h"
#include "CommandInput.h"
#include "CommandLine.h"
#include "DeliveryQueue.h"
#include "DeviceSockets.h"
#include "FaultyStation.h"
#include "StationTable.h"

struct pollfd;

namespace simulator {

// The devices of the device files on their sockets.
class Server {
public:
    // Opens sockets for each device, or for each router with a name and the devices behind it; throws
    // std::system_error, and std::invalid_argument if the ports from that of the command line on are used up.
    // Standard error gets a note of each broadcast address that cannot be shared. The clock must outlive the
    // server.
    Server(std::vector<Device> devices, CommandLine const& commandLine, Clock const& deviceClock);

    // One line for each device: ready NAME ADDRESS:PORT
    void Announce(std::ostream& out) const;
    // Serves until SIGINT or SIGTERM, or until the end of the duration or of standard input, as the options
    // state. `stopHandle` becomes readable on a signal. Carries out the commands from standard input
    // (FaultCommand.h); answers go to standard output, mistakes to standard error.
    void Run(int stopHandle);

private:
    struct Place {
        explicit Place(Endpoint const& local) : sockets(local) {}

        DeviceSockets sockets;
        std::vector<FaultyStation*> stations;  // at least one
        std::optional<StationTable> table;     // of more than one
        DeliveryQueue waiting;
    };

    Place& PlaceOf(Device const& device, std::uint32_t& nextPort);
    void MakeTables();
    std::vector<FaultyStation*> Receivers(Place const& place, Datagram const& datagram) const;
    void Serve(Place& place, bool isReadable);
    void Send(Place& place, std::vector<Delivery> deliveries);
    void Obey(std::vector<std::string> const& lines);
    int WaitingTime() const;
    bool IsOver() const;

    std::deque<FaultyStation> stations;  // in the order of the files; a station cannot be moved
    std::deque<Place> places;
    std::vector<Place const*> placeOfStation;
    CommandLine const options;
    Clock const& clock;
};

}  // namespace simulator
