#pragma once

#include <netinet/in.h>

#include <array>
#include <vector>

#include "Frames.h"

namespace bench {

// The floor: the system calls that an exchange of these octets takes, and no client.
class RawExchange {
public:
    // Asks for the objects from 1 to that number, at the most MostObjects. Throws std::system_error.
    RawExchange(unsigned short port, int objects);
    ~RawExchange();
    RawExchange(RawExchange const&) = delete;
    RawExchange& operator=(RawExchange const&) = delete;

    // Exchanges the frames of all objects, one after the other. The result is in microseconds per object.
    // Throws std::runtime_error when a frame is not answered within a second or not with its own answer.
    double Round() const;

private:
    using Frame = std::array<unsigned char, RequestFrame.size()>;

    void Exchange(Frame const& frame) const;

    std::vector<Frame> frames;
    sockaddr_in peer;
    int handle;
};

}  // namespace bench
