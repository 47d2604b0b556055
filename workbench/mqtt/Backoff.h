#pragma once

#include <chrono>
#include <random>

namespace workbench {

// The pauses between attempts to reach a broker: 1 s, and after each attempt twice as long, to 60 s. A pause
// is shortened by up to a quarter at random, so that the programs of a plant do not all come back at the same
// moment. It has no clock.
class Backoff {
public:
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds Shortest{1000};
    static constexpr Milliseconds Longest{60000};
    // A connection that was there for so long makes the next pause the shortest again. One that breaks sooner
    // does not: two programs with one client id would push each other off once a second.
    static constexpr Milliseconds Steady{30000};

    explicit Backoff(unsigned seed) : random(seed) {}

    // The pause before the next attempt, after one that failed.
    Milliseconds Next();
    // The same, after a connection that was there for `lasted`.
    Milliseconds NextAfter(Milliseconds lasted);

private:
    std::minstd_rand random;
    Milliseconds whole = Shortest;
};

}  // namespace workbench
