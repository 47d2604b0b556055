#include "RawExchange.h"

#include <sys/socket.h>
#include <sys/time.h>

#include <cstring>
#include <stdexcept>

#include "Loopback.h"
#include "StopWatch.h"

namespace bench {

namespace {

constexpr timeval Patience{1, 0};

bool IsAnswer(unsigned char const* frame, ssize_t size, unsigned char const* question) {
    return size == static_cast<ssize_t>(AnswerFrame.size()) &&
           frame[answer::InvokeId] == question[request::InvokeId] &&
           std::memcmp(frame + answer::ObjectId, question + request::ObjectId, ObjectIdSize) == 0;
}

}  // namespace

RawExchange::RawExchange(unsigned short port, int objects)
    : peer(LoopbackAddress(port)), handle(OpenLoopback()) {
    ::setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &Patience, sizeof Patience);
    for (int number = 1; number <= objects; ++number) {
        Frame frame = RequestFrame;
        frame[request::InvokeId] = static_cast<unsigned char>(number);
        frame[request::ObjectId + 2] = static_cast<unsigned char>(number >> 8);
        frame[request::ObjectId + 3] = static_cast<unsigned char>(number);
        frames.push_back(frame);
    }
}

RawExchange::~RawExchange() {
    ::close(handle);
}

double RawExchange::Round() const {
    StopWatch const watch;
    for (Frame const& frame : frames) {
        Exchange(frame);
    }
    return watch.MicrosecondsPer(frames.size());
}

void RawExchange::Exchange(Frame const& frame) const {
    ::sendto(handle, frame.data(), frame.size(), 0, reinterpret_cast<sockaddr const*>(&peer), sizeof peer);
    unsigned char buffer[1500];
    sockaddr_in sender{};
    socklen_t senderSize = sizeof sender;
    ssize_t const size =
        ::recvfrom(handle, buffer, sizeof buffer, 0, reinterpret_cast<sockaddr*>(&sender), &senderSize);
    if (!IsAnswer(buffer, size, frame.data())) {
        throw std::runtime_error("a raw request was not answered");
    }
}

}  // namespace bench
