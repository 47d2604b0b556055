#pragma once

#include <cstddef>

namespace test {

// The steps that the driver has taken on this thread: the branches of its code that were run, as the compiler
// counts them for us. The same on every run and on every machine, whatever else happens there.
std::size_t StepsSoFar();

template <class Body>
std::size_t StepsOf(Body const& body) {
    std::size_t const before = StepsSoFar();
    body();
    return StepsSoFar() - before;
}

}  // namespace test
