#include "FakeStream.h"

#include <algorithm>
#include <utility>

#include "Exceptions.h"

FakeStream::FakeStream(std::vector<char> const& source) : octets(source) {}

FakeStream::FakeStream(std::deque<char> const& source) : octets(source.begin(), source.end()) {}

FakeStream::FakeStream(std::vector<char>&& source) : octets(std::move(source)) {}

int FakeStream::Send(char const* /*data*/, unsigned int /*count*/) {
    return -1;
}

unsigned int FakeStream::Receive(char* buffer, unsigned int count) {
    std::size_t const delivered = std::min<std::size_t>(count, Left());
    std::copy_n(octets.data() + next, delivered, buffer);
    next += delivered;
    return static_cast<unsigned int>(delivered);
}

char FakeStream::ReadByte() {
    if (Available() < 1) {
        throw WrongLengthException();
    }
    return octets[next++];
}

int FakeStream::Available() {
    return static_cast<int>(Left());
}
