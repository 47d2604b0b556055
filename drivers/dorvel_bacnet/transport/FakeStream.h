#pragma once

#include <deque>
#include <vector>

#include "IStreamBase.h"

// A stream over its own copy of some octets. Reading consumes the copy from the front. There is no socket, so
// sending has no effect.
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
