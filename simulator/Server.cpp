#include "Server.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <stdexcept>

#include "FaultCommand.h"
#include "Printable.h"
#include "RequestLog.h"

namespace simulator {

namespace {

constexpr std::uint32_t LastPort = 65535;
constexpr int TickMilliseconds = 50;
constexpr int MostDatagramsInARow = 64;
constexpr std::size_t LongestName = 200;  // octets of a line
constexpr short Something = POLLIN | POLLHUP | POLLERR;

std::string NameOf(FaultyStation const& station) {
    return tools::Printable(station.GetDevice().Name(), LongestName);
}

}  // namespace

Server::Server(std::vector<Device> devices, CommandLine const& commandLine, Clock const& deviceClock)
    : options(commandLine), clock(deviceClock) {
    std::uint32_t next = commandLine.port;
    for (Device& device : devices) {
        Place& place = PlaceOf(device, next);
        FaultyStation& station = stations.emplace_back(std::move(device));
        place.stations.push_back(&station);
        placeOfStation.push_back(&place);
        if (commandLine.isVerbose) {
            station.OnWrite([name = NameOf(station)](std::string const& line) { LogLine(name, line); });
        }
    }
    MakeTables();
}

// That of the router with the same name, or a new one.
Server::Place& Server::PlaceOf(Device const& device, std::uint32_t& nextPort) {
    std::string const& router = device.Settings().router.name;
    for (Place& place : places) {
        if (!router.empty() && place.stations.front()->GetDevice().Settings().router.name == router) {
            return place;
        }
    }
    std::uint32_t const port = device.Settings().port ? *device.Settings().port : nextPort;
    if (port > LastPort) {
        throw std::invalid_argument("--port: from " + std::to_string(options.port) +
                                    " on there are not enough ports for the devices without their own");
    }
    if (!device.Settings().port && nextPort != 0) {
        ++nextPort;
    }
    Place& place = places.emplace_back(Endpoint{options.bindAddress, static_cast<std::uint16_t>(port)});
    for (std::string const& note : place.sockets.Notes()) {
        std::cerr << "bacnet-simulator: " << note << '\n';
    }
    return place;
}

void Server::MakeTables() {
    for (Place& place : places) {
        std::vector<NetworkAddress> addresses;
        for (FaultyStation const* const station : place.stations) {
            if (place.stations.size() > 1) {
                addresses.push_back(*station->GetDevice().Settings().position);
            }
        }
        if (!addresses.empty()) {
            place.table.emplace(std::move(addresses));
        }
    }
}

void Server::Announce(std::ostream& out) const {
    for (std::size_t i = 0; i < stations.size(); ++i) {
        out << "ready " << NameOf(stations[i]) << ' ' << placeOfStation[i]->sockets.Local().Text() << '\n';
    }
    out.flush();
}

void Server::Run(int stopHandle) {
    CommandInput input(STDIN_FILENO);
    std::vector<pollfd> handles{{stopHandle, POLLIN, 0}, {input.Handle(), POLLIN, 0}};
    std::vector<Place*> placeOfHandle(handles.size(), nullptr);
    for (Place& place : places) {
        for (int const handle : place.sockets.Handles()) {
            handles.push_back({handle, POLLIN, 0});
            placeOfHandle.push_back(&place);
        }
    }
    while (!IsOver()) {
        int const ready = poll(handles.data(), handles.size(), WaitingTime());
        if (ready > 0 && (handles[0].revents & Something) != 0) {
            return;
        }
        if (ready > 0 && (handles[1].revents & Something) != 0) {
            Obey(input.Read());
            handles[1].fd = input.Handle();
        }
        if (!input.IsOpen() && options.exitsWithStdin) {
            return;
        }
        for (std::size_t i = 2; i < handles.size(); ++i) {
            bool const isLast = i + 1 == handles.size() || placeOfHandle[i + 1] != placeOfHandle[i];
            bool const isReadable = ready > 0 && handles[i].revents != 0;
            if (isReadable || isLast) {
                Serve(*placeOfHandle[i], isReadable);
            }
        }
    }
}

void Server::Obey(std::vector<std::string> const& lines) {
    std::vector<CommandTarget> targets;
    for (FaultyStation& station : stations) {
        targets.push_back({station.GetDevice().Name(), &station.GetFaults()});
    }
    for (std::string const& line : lines) {
        CommandAnswer const answer = RunFaultCommand(line, targets);
        WriteWithoutWaiting(answer.isMistake ? STDERR_FILENO : STDOUT_FILENO, answer.text);
    }
}

std::vector<FaultyStation*> Server::Receivers(Place const& place, Datagram const& datagram) const {
    if (!place.table) {
        return place.stations;
    }
    std::vector<FaultyStation*> receivers;
    for (std::size_t const index : place.table->Receivers(datagram)) {
        receivers.push_back(place.stations[index]);
    }
    return receivers;
}

// Many datagrams to one device must not delay the others or the end of the program.
void Server::Serve(Place& place, bool isReadable) {
    for (int i = 0; isReadable && i < MostDatagramsInARow; ++i) {
        auto const datagram = place.sockets.Receive();
        if (!datagram) {
            break;
        }
        for (FaultyStation* const station : Receivers(place, *datagram)) {
            auto answers = station->Receive(*datagram, clock.Now());
            if (options.isVerbose) {
                LogExchange(NameOf(*station), *datagram, answers);
            }
            Send(place, std::move(answers));
        }
    }
    for (FaultyStation* const station : place.stations) {
        Send(place, station->Tick(clock.Now()));
    }
    for (Moment const now = clock.Now(); auto const delivery = place.waiting.Next(now);) {
        place.sockets.Send(delivery->datagram, delivery->fromElsewhere);
    }
}

void Server::Send(Place& place, std::vector<Delivery> deliveries) {
    for (Delivery& delivery : deliveries) {
        if (delivery.delay.count() > 0) {
            place.waiting.Add(std::move(delivery), clock.Now());
        } else {
            place.sockets.Send(std::move(delivery.datagram), delivery.fromElsewhere);
        }
    }
}

// Milliseconds until the next action if nothing arrives.
int Server::WaitingTime() const {
    std::chrono::milliseconds time(TickMilliseconds);
    for (Place const& place : places) {
        if (auto const next = place.waiting.NextTime()) {
            time = std::min(time, *next - clock.Now().sinceStart);
        }
    }
    return std::max(0, static_cast<int>(time.count()));
}

bool Server::IsOver() const {
    return options.duration && clock.Now().sinceStart >= *options.duration;
}

}  // namespace simulator
