#pragma once

namespace bench {

// A device of which nothing is left but its answers: it sends prepared octets to whoever asks for them.
class Responder {
public:
    // Binds a free UDP port of 127.0.0.1. Throws std::system_error.
    Responder();
    ~Responder();
    Responder(Responder const&) = delete;
    Responder& operator=(Responder const&) = delete;

    unsigned short Port() const;

    // Answers each request for the three properties of Frames.h; anything else stays without an answer. It
    // returns when the socket fails.
    void Serve() const;

private:
    int handle;
};

}  // namespace bench
