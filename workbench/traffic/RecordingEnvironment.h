#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <ostream>

#include "ForwardingEnvironment.h"

namespace workbench {

// Writes every datagram that is sent or received to a capture (CaptureFile.h). Each record is complete in the
// stream before the call returns, so that a capture survives a crash.
class RecordingEnvironment : public ForwardingEnvironment {
public:
    // The local address from which the system reaches a peer.
    using OwnAddress = std::function<in_addr(sockaddr_in const& peer)>;

    // Writes the file's header. The stream must outlive the environment.
    RecordingEnvironment(dorvel::HostEnvironment& innerEnvironment, std::ostream& captureStream,
                         OwnAddress ownAddressOf);

    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;

private:
    sockaddr_in Own(int handle, sockaddr_in const& peer);
    void Write(sockaddr_in const& from, sockaddr_in const& to, void const* data, int length);

    std::mutex mutex;
    std::ostream& capture;
    OwnAddress ownAddress;
    std::map<unsigned int, in_addr> ownAddresses;  // by address of the peer
    unsigned short identification = 0;
};

// The local address by the system's routes; 0.0.0.0 when there is no route. Sends nothing.
in_addr RouteAddress(sockaddr_in const& peer);

}  // namespace workbench
