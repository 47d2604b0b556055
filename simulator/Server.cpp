#include "Server.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <ostream>
#include <system_error>

#include "FaultCommand.h"
#include "RequestLog.h"

namespace simulator {

namespace {

constexpr int TickMilliseconds = 50;
constexpr int MostDatagramsInARow = 64;
constexpr short Something = POLLIN | POLLHUP | POLLERR;

// A socket with another address than the device: on a loopback address the next one with the same port,
// otherwise another port of the same address. No value if neither can be bound.
std::optional<UdpSocket> OpenElsewhere(Endpoint const& device) {
    constexpr std::uint32_t loopback = 127;
    Endpoint const next{device.address + 1, device.port};
    Endpoint const otherPort{device.address, 0};
    for (Endpoint const& endpoint : {next, otherPort}) {
        if (endpoint.port != 0 && (device.address >> 24 != loopback || next.address >> 24 != loopback)) {
            continue;
        }
        try {
            return UdpSocket(endpoint);
        } catch (std::system_error const&) {
            continue;  // tries the other one
        }
    }
    return std::nullopt;
}

}  // namespace

Server::Server(std::vector<Device> devices, CommandLine const& commandLine, Clock const& deviceClock)
    : options(commandLine), clock(deviceClock) {
    std::uint16_t next = commandLine.port;
    for (Device& device : devices) {
        std::uint16_t const port = device.Settings().port.value_or(next);
        if (!device.Settings().port && next != 0) {
            ++next;
        }
        std::string const name = device.Name();
        places.emplace_back(std::move(device), Endpoint{commandLine.bindAddress, port});
        if (commandLine.isVerbose) {
            places.back().station.OnWrite([name](std::string const& line) { LogLine(name, line); });
        }
    }
}

void Server::Announce(std::ostream& out) const {
    for (Place const& place : places) {
        out << "ready " << place.station.GetDevice().Name() << ' ' << place.socket.Local().Text() << '\n';
    }
    out.flush();
}

void Server::Run(int stopHandle) {
    std::vector<pollfd> handles;
    for (Place const& place : places) {
        handles.push_back({place.socket.Handle(), POLLIN, 0});
    }
    handles.push_back({stopHandle, POLLIN, 0});
    CommandInput input(STDIN_FILENO);
    handles.push_back({input.Handle(), POLLIN, 0});
    while (!IsOver()) {
        if (poll(handles.data(), handles.size(), WaitingTime()) > 0) {
            if ((handles[places.size()].revents & Something) != 0) {
                return;
            }
            if ((handles.back().revents & Something) != 0) {
                Obey(input.Read());
                handles.back().fd = input.Handle();
            }
        }
        if (!input.IsOpen() && options.exitsWithStdin) {
            return;
        }
        for (Place& place : places) {
            Serve(place);
        }
    }
}

void Server::Obey(std::vector<std::string> const& lines) {
    std::vector<CommandTarget> targets;
    for (Place& place : places) {
        targets.push_back({place.station.GetDevice().Name(), &place.station.GetFaults()});
    }
    for (std::string const& line : lines) {
        CommandAnswer const answer = RunFaultCommand(line, targets);
        WriteWithoutWaiting(answer.isMistake ? STDERR_FILENO : STDOUT_FILENO, answer.text);
    }
}

// Many datagrams to one device must not delay the others or the end of the program.
void Server::Serve(Place& place) {
    for (int i = 0; i < MostDatagramsInARow; ++i) {
        auto const datagram = place.socket.Receive();
        if (!datagram) {
            break;
        }
        auto answers = place.station.Receive(*datagram, clock.Now());
        if (options.isVerbose) {
            LogExchange(place.station.GetDevice().Name(), *datagram, answers);
        }
        Send(place, std::move(answers));
    }
    Send(place, place.station.Tick(clock.Now()));
    for (Moment const now = clock.Now(); auto const delivery = place.waiting.Next(now);) {
        SendNow(place, *delivery);
    }
}

void Server::Send(Place& place, std::vector<Delivery> deliveries) {
    for (Delivery& delivery : deliveries) {
        if (delivery.delay.count() > 0) {
            place.waiting.Add(std::move(delivery), clock.Now());
        } else {
            SendNow(place, delivery);
        }
    }
}

void Server::SendNow(Place& place, Delivery const& delivery) {
    if (!delivery.fromElsewhere) {
        place.socket.Send(delivery.datagram);
        return;
    }
    if (!place.elsewhere) {
        if (auto opened = OpenElsewhere(place.socket.Local())) {
            place.elsewhere.emplace(std::move(*opened));
        }
    }
    if (place.elsewhere) {
        place.elsewhere->Send(delivery.datagram);
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
