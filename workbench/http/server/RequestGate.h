#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "HttpRequest.h"

namespace workbench {

// What one connection may take. The limits of the HTTP library are for each read, so that a client which
// sends an octet now and then would hold a thread for ever.
struct GateLimits {
    std::size_t line = 4096;   // of the request, in octets
    std::size_t head = 16384;  // the line and all headers
    std::size_t body = LongestBody;
    std::chrono::milliseconds request{10000};  // until the whole request is there
    std::chrono::milliseconds answer{30000};   // then until the whole answer is taken
    std::chrono::milliseconds stream{75000};   // the same for a stream of events
};

// Reads requests from a connected socket and writes answers to it, within limits of size and of total time.
// One connection has one request. Does not own the socket.
class RequestGate {
public:
    enum class Outcome { Ready, Closed, TooSlow, LineTooLong, HeadTooLarge, BodyTooLarge };

    RequestGate(int connectedSocket, GateLimits const& gateLimits);

    // Reads the head, up to its empty line. Only with Ready may the rest be read.
    Outcome ReadHead();

    // The octets of the request in order, from its first. Returns how many, 0 at the end of the connection,
    // or -1 after the time or the size is over (LastOutcome).
    long Read(char* octets, std::size_t size);
    // Returns size, or -1 if the other side does not take all in the time of the answer.
    long Write(char const* octets, std::size_t size);
    // The connection has the time of a stream from now on.
    void BeginStream();
    // False once the other side has gone.
    bool IsConnected() const;
    Outcome LastOutcome() const { return outcome; }

    // Ends the connection so that the other side gets the whole answer, even if it still sends. Waits for it
    // half a second; only needed for a request that was not read to its end.
    void Finish();

private:
    using Clock = std::chrono::steady_clock;

    long Receive(char* octets, std::size_t size);
    bool WaitFor(short events, Clock::time_point deadline) const;
    void BeginAnswer();

    int socket;
    GateLimits limits;
    std::string head;      // and what of the body came with it
    std::size_t used = 0;  // octets of it that were read
    std::size_t received = 0;
    Outcome outcome = Outcome::Ready;
    bool isAnswering = false;
    Clock::time_point deadline;
};

}  // namespace workbench
