#include "PreparedNetwork.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Counting.h"

namespace bench {

namespace {

// Offsets in datagrams between the driver and a device on the local network, which begin with six octets of
// BVLC and NPCI.
constexpr std::size_t PduType = 6;
constexpr char SegmentAckType = 0x40;
constexpr std::size_t RequestInvokeId = 8;
constexpr std::size_t RequestObject = 11;
constexpr std::size_t AnswerInvokeId = 7;
constexpr std::size_t AnswerObject = 10;
constexpr std::size_t SegmentObject = AnswerObject + 2;
constexpr std::size_t ObjectSize = 4;
constexpr char SegmentedFlag = 0x08;

}  // namespace

PreparedNetwork::PreparedNetwork(std::vector<test::Octets> prepared)
    : answers(std::move(prepared)), next(answers.size()), asked(answers.size()) {
    dorvel::SetEnvironment(this);
}
PreparedNetwork::~PreparedNetwork() {
    dorvel::SetEnvironment(nullptr);
}

int PreparedNetwork::Open(unsigned short) {
    return 3;
}
unsigned short PreparedNetwork::LocalPort(int) {
    return 50000;
}
void PreparedNetwork::Close(int) {}

bool PreparedNetwork::Send(int, sockaddr_in const&, void const* data, int) {
    CountingToggled const notCounted;
    auto const* datagram = static_cast<char const*>(data);
    if (datagram[PduType] == SegmentAckType) {
        asked = std::min(asked + 1, answers.size());
    } else {
        Begin(datagram);
    }
    return true;
}

void PreparedNetwork::Begin(char const* request) {
    ++requests;
    if (answers.empty()) {
        return;
    }
    next = 0;
    asked = 1;
    for (test::Octets& answer : answers) {
        answer[AnswerInvokeId] = request[RequestInvokeId];
    }
    test::Octets& first = answers.front();
    std::size_t const object = (first[PduType] & SegmentedFlag) != 0 ? SegmentObject : AnswerObject;
    if (first.size() >= object + ObjectSize) {
        std::memcpy(first.data() + object, request + RequestObject, ObjectSize);
    }
}

int PreparedNetwork::Receive(int, sockaddr_in& sender, void* buffer, int size, int) {
    CountingToggled const notCounted;
    if (next >= asked) {
        return -1;
    }
    test::Octets const& answer = answers[next++];
    sender = sockaddr_in();
    std::size_t const count = std::min(answer.size(), static_cast<std::size_t>(size));
    std::memcpy(buffer, answer.data(), count);
    return static_cast<int>(count);
}

// 1 January 2024, 00:00 UTC.
long long PreparedNetwork::Now() {
    return 133485408000000000;
}
long long PreparedNetwork::LocalTimeDiff() {
    return 0;
}

}  // namespace bench
