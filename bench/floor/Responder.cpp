#include "Responder.h"

#include <cstring>

#include "Frames.h"
#include "Loopback.h"

namespace bench {

namespace {

// Compares header and property list, but not the size of answer that the client accepts.
bool IsExpected(unsigned char const* frame, std::size_t size) {
    constexpr std::size_t headerSize = 6;
    constexpr std::size_t service = 9;
    return size == RequestFrame.size() && std::memcmp(frame, RequestFrame.data(), headerSize) == 0 &&
           frame[service] == RequestFrame[service] &&
           std::memcmp(frame + request::PropertyList, RequestFrame.data() + request::PropertyList,
                       RequestFrame.size() - request::PropertyList) == 0;
}

}  // namespace

Responder::Responder() : handle(OpenLoopback()) {}

Responder::~Responder() {
    ::close(handle);
}

unsigned short Responder::Port() const {
    return LocalPort(handle);
}

void Responder::Serve() const {
    auto frame = AnswerFrame;
    std::array<unsigned char, 1500> question{};
    for (;;) {
        sockaddr_in peer{};
        socklen_t peerSize = sizeof peer;
        ssize_t const size = ::recvfrom(handle, question.data(), question.size(), 0,
                                        reinterpret_cast<sockaddr*>(&peer), &peerSize);
        if (size < 0) {
            return;
        }
        if (!IsExpected(question.data(), static_cast<std::size_t>(size))) {
            continue;
        }
        unsigned char const* const objectId = question.data() + request::ObjectId;
        frame[answer::InvokeId] = question[request::InvokeId];
        std::memcpy(frame.data() + answer::ObjectId, objectId, ObjectIdSize);
        std::memcpy(frame.data() + answer::EndOfReal, objectId + ObjectIdSize - EndOfRealSize, EndOfRealSize);
        ::sendto(handle, frame.data(), frame.size(), 0, reinterpret_cast<sockaddr*>(&peer), peerSize);
    }
}

}  // namespace bench
