#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>

#include "Calendar.h"
#include "dorvelshare/HostEnvironment.h"

namespace dorvel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr long long TicksTo1970 = 11'644'473'600 * TicksPerSecond;

sockaddr* Generic(sockaddr_in* address) {
    return reinterpret_cast<sockaddr*>(address);
}
sockaddr const* Generic(sockaddr_in const* address) {
    return reinterpret_cast<sockaddr const*>(address);
}

sockaddr_in LocalAddress(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(port);
    return address;
}

// The receive time-out of every socket, in milliseconds. A receive with this usual time-out takes one system
// call; any other needs poll as well.
constexpr int UsualWait = 1000;

// The kernel counts the time-out in ticks, the first of which has already begun; with one millisecond more it
// is never too short.
timeval SocketWait() {
    timeval wait{};
    wait.tv_sec = UsualWait / 1000;
    wait.tv_usec = (UsualWait % 1000 + 1) * 1000;
    return wait;
}

long long TicksOf(timespec const& time) {
    return time.tv_sec * TicksPerSecond + time.tv_nsec / 100;
}

// True for an error that the handle keeps. All others (an ICMP message about an earlier request, a network
// that is down for a while, a datagram with a bad checksum) concern one datagram, and waiting continues.
bool IsLasting(int error) {
    return error == EBADF || error == ENOTSOCK || error == EINVAL || error == EFAULT || error == ENOTCONN;
}

// Waits until the handle may have a datagram. False at the deadline, and for an invalid handle.
bool WaitReadable(int handle, Clock::time_point deadline) {
    pollfd entry{handle, POLLIN, 0};
    for (;;) {
        auto const rest = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        int const count = ::poll(&entry, 1, static_cast<int>(std::max<long long>(rest, 0)));
        if (count > 0) {
            return (entry.revents & POLLNVAL) == 0;
        }
        bool const isBroken = count < 0 && errno != EINTR;
        if (isBroken || Clock::now() >= deadline) {
            return false;
        }
    }
}

class OperatingSystem : public HostEnvironment {
public:
    int Open(unsigned short port) override {
        int const handle = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        if (handle < 0) {
            return -1;
        }
        int const yes = 1;
        timeval const wait = SocketWait();
        sockaddr_in const address = LocalAddress(port);
        if (::setsockopt(handle, SOL_SOCKET, SO_BROADCAST, &yes, sizeof yes) != 0 ||
            ::setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait) != 0 ||
            ::bind(handle, Generic(&address), sizeof address) != 0) {
            ::close(handle);
            return -1;
        }
        return handle;
    }

    unsigned short LocalPort(int handle) override {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        return ::getsockname(handle, Generic(&address), &size) == 0 ? ntohs(address.sin_port) : 0;
    }

    void Close(int handle) override { ::close(handle); }

    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override {
        for (int reports = 0;;) {
            ssize_t const sent =
                ::sendto(handle, data, static_cast<std::size_t>(length), 0, Generic(&peer), sizeof peer);
            // ECONNREFUSED concerns an earlier datagram and is reported once.
            bool const again = sent < 0 && (errno == EINTR || (errno == ECONNREFUSED && reports++ == 0));
            if (!again) {
                return sent == length;
            }
        }
    }

    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        auto const deadline = Clock::now() + std::chrono::milliseconds(std::max(timeout, 0));
        int flags = timeout == UsualWait ? 0 : MSG_DONTWAIT;
        for (;;) {
            socklen_t senderSize = sizeof sender;
            ssize_t const length = ::recvfrom(handle, buffer, static_cast<std::size_t>(size), flags,
                                              Generic(&sender), &senderSize);
            if (length >= 0) {
                return static_cast<int>(length);
            }
            flags = MSG_DONTWAIT;
            if (IsLasting(errno) || Clock::now() >= deadline || !WaitReadable(handle, deadline)) {
                return -1;
            }
        }
    }

    long long Now() override {
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME, &now);
        return TicksTo1970 + TicksOf(now);
    }

    long long SteadyNow() override {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        return TicksOf(now);
    }

    long long LocalTimeDiff() override {
        ::tzset();  // localtime_r need not read the zone again
        std::time_t const now = std::time(nullptr);
        std::tm local{};
        return ::localtime_r(&now, &local) ? local.tm_gmtoff * TicksPerSecond : 0;
    }
};

}  // namespace

HostEnvironment& SystemEnvironment() {
    static OperatingSystem system;
    return system;
}

}  // namespace dorvel
