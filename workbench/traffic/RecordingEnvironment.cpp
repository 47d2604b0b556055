#include "RecordingEnvironment.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>
#include <utility>

#include "CaptureFile.h"

namespace workbench {

namespace {

constexpr std::size_t MostOwnAddresses = 1000;

void Put(std::ostream& stream, Octets const& octets) {
    stream.write(octets.data(), static_cast<std::streamsize>(octets.size()));
    stream.flush();
}

}  // namespace

RecordingEnvironment::RecordingEnvironment(dorvel::HostEnvironment& innerEnvironment,
                                           std::ostream& captureStream, OwnAddress ownAddressOf)
    : ForwardingEnvironment(innerEnvironment), capture(captureStream), ownAddress(std::move(ownAddressOf)) {
    Put(capture, CaptureHeader());
}

bool RecordingEnvironment::Send(int handle, sockaddr_in const& peer, void const* data, int length) {
    bool const sent = inner.Send(handle, peer, data, length);
    if (sent) {
        Write(Own(handle, peer), peer, data, length);
    }
    return sent;
}

int RecordingEnvironment::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    int const length = inner.Receive(handle, sender, buffer, size, timeout);
    if (length >= 0) {
        Write(sender, Own(handle, sender), buffer, length);
    }
    return length;
}

sockaddr_in RecordingEnvironment::Own(int handle, sockaddr_in const& peer) {
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_port = htons(inner.LocalPort(handle));
    std::lock_guard<std::mutex> const lock(mutex);
    auto known = ownAddresses.find(peer.sin_addr.s_addr);
    if (known == ownAddresses.end()) {
        if (ownAddresses.size() >= MostOwnAddresses) {
            ownAddresses.clear();
        }
        known = ownAddresses.emplace(peer.sin_addr.s_addr, ownAddress(peer)).first;
    }
    own.sin_addr = known->second;
    return own;
}

void RecordingEnvironment::Write(sockaddr_in const& from, sockaddr_in const& to, void const* data,
                                 int length) {
    std::lock_guard<std::mutex> const lock(mutex);
    Put(capture, CaptureRecord(from, to, data, length, inner.Now(), identification++));
}

in_addr RouteAddress(sockaddr_in const& peer) {
    sockaddr_in own{};
    socklen_t length = sizeof own;
    int const handle = socket(AF_INET, SOCK_DGRAM, 0);
    bool const routed = handle >= 0 &&
                        connect(handle, reinterpret_cast<sockaddr const*>(&peer), sizeof peer) == 0 &&
                        getsockname(handle, reinterpret_cast<sockaddr*>(&own), &length) == 0;
    if (handle >= 0) {
        close(handle);
    }
    return routed ? own.sin_addr : in_addr{};
}

}  // namespace workbench
