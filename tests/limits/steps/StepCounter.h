#pragma once

#include <cstddef>

namespace test {

// The steps of the driver on this thread: the branches of its code that were run, counted by the compiler's
// instrumentation. They are the same on every run and every machine, whatever its load.
std::size_t StepsSoFar();

template <class Body>
std::size_t StepsOf(Body const& body) {
    std::size_t const before = StepsSoFar();
    body();
    return StepsSoFar() - before;
}

}  // namespace test
