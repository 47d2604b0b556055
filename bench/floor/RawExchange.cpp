#include "RawExchange.h"

#include <poll.h>

#include <cstring>
#include <stdexcept>

#include "Loopback.h"
#include "StopWatch.h"

namespace bench {

namespace {

constexpr int Patience = 1000;  // milliseconds

bool IsAnswer(unsigned char const* frame, ssize_t size, unsigned char const* question) {
    return size == static_cast<ssize_t>(AnswerFrame.size()) &&
           frame[answer::InvokeId] == question[request::InvokeId] &&
           std::memcmp(frame + answer::ObjectId, question + request::ObjectId, ObjectIdSize) == 0;
}

}  // namespace

RawExchange::RawExchange(unsigned short port, int objects)
    : peer(LoopbackAddress(port)), handle(OpenLoopback()) {
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
    pollfd entry{handle, POLLIN, 0};
    unsigned char buffer[1500];
    sockaddr_in sender{};
    socklen_t senderSize = sizeof sender;
    ssize_t const size = ::poll(&entry, 1, Patience) == 1
                             ? ::recvfrom(handle, buffer, sizeof buffer, MSG_DONTWAIT,
                                          reinterpret_cast<sockaddr*>(&sender), &senderSize)
                             : -1;
    if (!IsAnswer(buffer, size, frame.data())) {
        throw std::runtime_error("a raw request was not answered");
    }
}

}  // namespace bench
