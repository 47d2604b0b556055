#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "IStreamBase.h"

// A stream over its own copy of some octets, read from the front. It has no socket, so sending has no
// effect.
class FakeStream : public IStreamBase {
public:
    explicit FakeStream(std::vector<char> const& source);
    explicit FakeStream(std::deque<char> const& source);
    // Takes the octets without a copy.
    explicit FakeStream(std::vector<char>&& source);

    // Ignores its arguments and returns -1.
    int Send(char const* data, unsigned int count) override;
    unsigned int Receive(char* buffer, unsigned int count) override;
    char ReadByte() override;
    int Available() override;

private:
    std::size_t Left() const { return octets.size() - next; }

    std::vector<char> const octets;
    // The index of the next octet.
    std::size_t next = 0;
};
