#pragma once

#include <netinet/in.h>

#include <array>
#include <vector>

#include "Frames.h"

namespace bench {

// The floor: the system calls that an exchange of these octets needs, without a client.
class RawExchange {
public:
    // Requests the objects 1 to `objects`, MostObjects at most. Throws std::system_error.
    RawExchange(unsigned short port, int objects);
    ~RawExchange();
    RawExchange(RawExchange const&) = delete;
    RawExchange& operator=(RawExchange const&) = delete;

    // Exchanges the frames of all objects, one after the other. Returns microseconds per object. Throws
    // std::runtime_error when a frame is not answered within a second, or with another answer than its own.
    double Round() const;

private:
    using Frame = std::array<unsigned char, RequestFrame.size()>;

    void Exchange(Frame const& frame) const;

    std::vector<Frame> frames;
    sockaddr_in peer;
    int handle;
};

}  // namespace bench
