#include "RequestGate.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace workbench {

namespace {

constexpr char EndOfHead[] = "\r\n\r\n";
constexpr std::chrono::milliseconds Goodbye{500};

}  // namespace

RequestGate::RequestGate(int connectedSocket, GateLimits const& gateLimits)
    : socket(connectedSocket), limits(gateLimits), deadline(Clock::now() + limits.request) {}

RequestGate::Outcome RequestGate::ReadHead() {
    std::array<char, 4096> octets{};
    while (true) {
        long const count = Receive(octets.data(), octets.size());
        if (count <= 0) {
            outcome = count == 0 ? Outcome::Closed : Outcome::TooSlow;
            return outcome;
        }
        std::size_t const from = head.size() < 3 ? 0 : head.size() - 3;
        head.append(octets.data(), static_cast<std::size_t>(count));
        std::size_t const end = head.find(EndOfHead, from);
        std::size_t const size = std::min(end, head.size());
        if (std::min(head.find('\n'), size) > limits.line) {
            outcome = Outcome::LineTooLong;
        } else if (size > limits.head) {
            outcome = Outcome::HeadTooLarge;
        }
        if (end != std::string::npos || outcome != Outcome::Ready) {
            return outcome;
        }
    }
}

long RequestGate::Read(char* octets, std::size_t size) {
    if (used < head.size()) {
        std::size_t const count = std::min(size, head.size() - used);
        std::memcpy(octets, head.data() + used, count);
        used += count;
        return static_cast<long>(count);
    }
    if (received >= limits.head + limits.body) {
        outcome = Outcome::BodyTooLarge;
        return -1;
    }
    long const count = Receive(octets, size);
    if (count < 0) {
        outcome = Outcome::TooSlow;
    }
    return count;
}

long RequestGate::Receive(char* octets, std::size_t size) {
    while (WaitFor(POLLIN, deadline)) {
        long const count = recv(socket, octets, size, MSG_DONTWAIT);
        if (count >= 0) {
            received += static_cast<std::size_t>(count);
            return count;
        }
        if (errno != EAGAIN && errno != EINTR) {
            return 0;
        }
    }
    return -1;
}

bool RequestGate::WaitFor(short events, Clock::time_point until) const {
    while (true) {
        auto const rest = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
        if (rest <= 0) {
            return false;
        }
        pollfd waiting{socket, events, 0};
        int const ready = poll(&waiting, 1, static_cast<int>(rest));
        if (ready > 0) {
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            return false;
        }
    }
}

void RequestGate::BeginAnswer() {
    if (!isAnswering) {
        isAnswering = true;
        deadline = Clock::now() + limits.answer;
    }
}

void RequestGate::BeginStream() {
    isAnswering = true;
    deadline = Clock::now() + limits.stream;
}

long RequestGate::Write(char const* octets, std::size_t size) {
    BeginAnswer();
    std::size_t sent = 0;
    while (sent < size) {
        if (!WaitFor(POLLOUT, deadline)) {
            return -1;
        }
        long const count = send(socket, octets + sent, size - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count > 0) {
            sent += static_cast<std::size_t>(count);
        } else if (errno != EAGAIN && errno != EINTR) {
            return -1;
        }
    }
    return static_cast<long>(size);
}

bool RequestGate::IsConnected() const {
    pollfd state{socket, POLLRDHUP, 0};
    return poll(&state, 1, 0) >= 0 && (state.revents & (POLLRDHUP | POLLHUP | POLLERR | POLLNVAL)) == 0;
}

// Closing a socket with octets that were not read resets the connection, and the other side may lose the
// answer.
void RequestGate::Finish() {
    shutdown(socket, SHUT_WR);
    deadline = Clock::now() + Goodbye;
    std::array<char, 4096> octets{};
    std::size_t const most = received + limits.head + limits.body;
    while (received < most && Receive(octets.data(), octets.size()) > 0) {
    }
}

}  // namespace workbench
