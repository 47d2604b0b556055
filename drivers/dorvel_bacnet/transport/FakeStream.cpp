#include "FakeStream.h"

#include <algorithm>
#include <cstddef>

#include "Exceptions.h"
#include "PopFront.h"

FakeStream::FakeStream(std::vector<char> const& octets) : queue(octets.begin(), octets.end()) {}

FakeStream::FakeStream(std::deque<char> const& octets) : queue(octets) {}

int FakeStream::Send(char const* /*octets*/, unsigned int /*count*/) {
    return -1;
}

unsigned int FakeStream::Receive(char* buffer, unsigned int count) {
    auto const delivered = std::min<std::size_t>(count, queue.size());
    std::generate_n(buffer, delivered, [this] { return PopFront(queue); });
    return static_cast<unsigned int>(delivered);
}

char FakeStream::ReadByte() {
    if (Available() < 1) {
        throw WrongLengthException();
    }
    return PopFront(queue);
}

int FakeStream::Available() {
    return static_cast<int>(queue.size());
}
