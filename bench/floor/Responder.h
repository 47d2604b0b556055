#pragma once

namespace bench {

// A device reduced to its answers: it sends prepared octets to every client that requests them.
class Responder {
public:
    // Binds a free UDP port of 127.0.0.1. Throws std::system_error.
    Responder();
    ~Responder();
    Responder(Responder const&) = delete;
    Responder& operator=(Responder const&) = delete;

    unsigned short Port() const;

    // Answers each request for the three properties of Frames.h and ignores everything else. Returns when
    // the socket fails.
    void Serve() const;

private:
    int handle;
};

}  // namespace bench
