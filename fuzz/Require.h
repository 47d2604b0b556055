#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Asserts what must hold for every input. If it does not hold, prints what and ends the process so that
// libFuzzer reports a finding.
inline void Require(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

}  // namespace fuzz
