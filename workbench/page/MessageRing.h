#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "HttpService.h"

namespace workbench {

// The newest messages for any number of readers, each of which has a position. Messages are numbered from 0
// and shared; a reader that is slower than the messages loses the oldest and learns how many. Memory is
// bounded, however many readers there are. Thread-safe.
class MessageRing {
public:
    static constexpr std::size_t Most = 2048;
    static constexpr std::size_t MostOctets = std::size_t{32} << 20;

    explicit MessageRing(std::size_t most = Most, std::size_t mostOctets = MostOctets)
        : longest(most), largest(mostOctets) {}

    void Push(std::string text);
    // Forgets all messages; a reader that has not had them has lost them.
    void Clear();

    struct Taken {
        std::vector<SharedText> messages;
        unsigned long long next = 0;  // the position after them
        unsigned long long lost = 0;  // messages from the position on that are no longer there
    };
    // The messages from the position on, at most those of half a megabyte, and at least one if there is one.
    Taken Take(unsigned long long position) const;
    // Waits until there is a message at the position, the time is over or the ring is closed.
    void Wait(unsigned long long position, std::chrono::milliseconds timeout) const;
    // The position of the oldest message, and that of the next one.
    unsigned long long Begin() const;
    unsigned long long End() const;
    // Ends all waits, also later ones.
    void Close();

private:
    void DropOldest();

    std::size_t longest;
    std::size_t largest;
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::deque<SharedText> messages;
    std::size_t octets = 0;
    unsigned long long end = 0;
    bool isClosed = false;
};

}  // namespace workbench
