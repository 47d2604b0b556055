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

constexpr int kTickMilliseconds = 50;
constexpr int kMostDatagramsInARow = 64;
constexpr short kSomething = POLLIN | POLLHUP | POLLERR;

// A socket that is not the device's: on a loopback address, the next such address with the same port, or else
// another port of the same address. Nothing if neither can be had.
std::optional<UdpSocket> openElsewhere(Endpoint const& device) {
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
            continue;  // then the other one
        }
    }
    return std::nullopt;
}

}  // namespace

Server::Server(std::vector<Device> devices, CommandLine const& options, Clock const& clock)
    : m_options(options), m_clock(clock) {
    std::uint16_t next = options.port;
    for (Device& device : devices) {
        std::uint16_t const port = device.settings().port.value_or(next);
        if (!device.settings().port && next != 0) {
            ++next;
        }
        std::string const name = device.name();
        m_places.emplace_back(std::move(device), Endpoint{options.bindAddress, port});
        if (options.isVerbose) {
            m_places.back().station.onWrite([name](std::string const& line) { logLine(name, line); });
        }
    }
}

void Server::announce(std::ostream& out) const {
    for (Place const& place : m_places) {
        out << "ready " << place.station.device().name() << ' ' << place.socket.local().text() << '\n';
    }
    out.flush();
}

void Server::run(int stopHandle) {
    std::vector<pollfd> handles;
    for (Place const& place : m_places) {
        handles.push_back({place.socket.handle(), POLLIN, 0});
    }
    handles.push_back({stopHandle, POLLIN, 0});
    CommandInput input(STDIN_FILENO);
    handles.push_back({input.handle(), POLLIN, 0});
    while (!isOver()) {
        if (poll(handles.data(), handles.size(), waitingTime()) > 0) {
            if ((handles[m_places.size()].revents & kSomething) != 0) {
                return;
            }
            if ((handles.back().revents & kSomething) != 0) {
                obey(input.read());
                handles.back().fd = input.handle();
            }
        }
        if (!input.isOpen() && m_options.exitsWithStdin) {
            return;
        }
        for (Place& place : m_places) {
            serve(place);
        }
    }
}

void Server::obey(std::vector<std::string> const& lines) {
    std::vector<CommandTarget> targets;
    for (Place& place : m_places) {
        targets.push_back({place.station.device().name(), &place.station.faults()});
    }
    for (std::string const& line : lines) {
        CommandAnswer const answer = runFaultCommand(line, targets);
        writeWithoutWaiting(answer.isMistake ? STDERR_FILENO : STDOUT_FILENO, answer.text);
    }
}

// A flood on one device must not keep the others, nor the end, from their turn.
void Server::serve(Place& place) {
    for (int i = 0; i < kMostDatagramsInARow; ++i) {
        auto const datagram = place.socket.receive();
        if (!datagram) {
            break;
        }
        auto answers = place.station.receive(*datagram, m_clock.now());
        if (m_options.isVerbose) {
            logExchange(place.station.device().name(), *datagram, answers);
        }
        send(place, std::move(answers));
    }
    send(place, place.station.tick(m_clock.now()));
    for (Moment const now = m_clock.now(); auto const delivery = place.waiting.next(now);) {
        sendNow(place, *delivery);
    }
}

void Server::send(Place& place, std::vector<Delivery> deliveries) {
    for (Delivery& delivery : deliveries) {
        if (delivery.delay.count() > 0) {
            place.waiting.add(std::move(delivery), m_clock.now());
        } else {
            sendNow(place, delivery);
        }
    }
}

void Server::sendNow(Place& place, Delivery const& delivery) {
    if (!delivery.fromElsewhere) {
        place.socket.send(delivery.datagram);
        return;
    }
    if (!place.elsewhere) {
        if (auto opened = openElsewhere(place.socket.local())) {
            place.elsewhere.emplace(std::move(*opened));
        }
    }
    if (place.elsewhere) {
        place.elsewhere->send(delivery.datagram);
    }
}

// Milliseconds until something is to be done even if nothing comes.
int Server::waitingTime() const {
    std::chrono::milliseconds time(kTickMilliseconds);
    for (Place const& place : m_places) {
        if (auto const next = place.waiting.nextTime()) {
            time = std::min(time, *next - m_clock.now().sinceStart);
        }
    }
    return std::max(0, static_cast<int>(time.count()));
}

bool Server::isOver() const {
    return m_options.duration && m_clock.now().sinceStart >= *m_options.duration;
}

}  // namespace simulator
