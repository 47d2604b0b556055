#include "Server.h"

#include <poll.h>
#include <unistd.h>

#include <ostream>

#include "RequestLog.h"

namespace simulator {

namespace {

constexpr int kTickMilliseconds = 50;
constexpr int kMostDatagramsInARow = 64;
constexpr short kSomething = POLLIN | POLLHUP | POLLERR;

// Whether the other end of standard input is gone; what comes from there is thrown away.
bool isClosed(int handle) {
    char ignored[256];
    return read(handle, ignored, sizeof ignored) <= 0;
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
    handles.push_back({m_options.exitsWithStdin ? STDIN_FILENO : -1, POLLIN, 0});
    pollfd const& stop = handles[m_places.size()];
    pollfd const& input = handles.back();
    while (!isOver()) {
        bool const isSomething = poll(handles.data(), handles.size(), kTickMilliseconds) > 0;
        if (isSomething && ((stop.revents & kSomething) != 0 ||
                            ((input.revents & kSomething) != 0 && isClosed(STDIN_FILENO)))) {
            return;
        }
        for (Place& place : m_places) {
            serve(place);
        }
    }
}

// A flood on one device must not keep the others, nor the end, from their turn.
void Server::serve(Place& place) {
    for (int i = 0; i < kMostDatagramsInARow; ++i) {
        auto const datagram = place.socket.receive();
        if (!datagram) {
            break;
        }
        auto const answers = place.station.receive(*datagram, m_clock.now());
        if (m_options.isVerbose) {
            logExchange(place.station.device().name(), *datagram, answers);
        }
        send(place, answers);
    }
    send(place, place.station.tick(m_clock.now()));
}

void Server::send(Place& place, std::vector<Datagram> const& datagrams) {
    for (Datagram const& datagram : datagrams) {
        place.socket.send(datagram);
    }
}

bool Server::isOver() const {
    return m_options.duration && m_clock.now().sinceStart >= *m_options.duration;
}

}  // namespace simulator
