#pragma once

#include <deque>
#include <vector>

#include "IStreamBase.h"

// A read-once stream over a copy of octets. Reading consumes the copy from its front; no socket stands
// behind it, so sending has no effect.
class FakeStream : public IStreamBase {
public:
    explicit FakeStream(std::vector<char> const& octets);
    explicit FakeStream(std::deque<char> const& octets);

    // Ignores its arguments and returns -1.
    int Send(char const* octets, unsigned int count) override;
    unsigned int Receive(char* buffer, unsigned int count) override;
    char ReadByte() override;
    int Available() override;

private:
    std::deque<char> queue;
};
