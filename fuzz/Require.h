#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

// What must hold for every input: if it does not, says what and ends the process in the way that libFuzzer
// takes for a finding.
inline void Require(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

}  // namespace fuzz
