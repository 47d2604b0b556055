#pragma once

#if __has_include(<valgrind/callgrind.h>) && !defined(__arm__)
#include <valgrind/callgrind.h>
#endif

namespace bench {

// False: nothing is counted. Who counts sets it once what runs only the first time has run.
inline bool isCountingAllowed = false;

// Turns the counting of instructions on if it is off, and off if it is on; it begins off. callgrind
// (--collect-atstart=no) listens to it, and for the target the plugin in bench/stack, which knows it by an
// instruction that does nothing. Without either it costs next to nothing.
inline void ToggleCounting() {
    if (isCountingAllowed) {
#if defined(__arm__)
        asm volatile("nop.w {85}" ::: "memory");
#elif defined(CALLGRIND_TOGGLE_COLLECT)
        CALLGRIND_TOGGLE_COLLECT;
#endif
    }
}

// Toggled while it lives: what is to be counted stands in one such scope, and what of that is not the
// driver's in a second one within.
class CountingToggled {
public:
    CountingToggled() { ToggleCounting(); }
    ~CountingToggled() { ToggleCounting(); }
    CountingToggled(CountingToggled const&) = delete;
    CountingToggled& operator=(CountingToggled const&) = delete;
};

}  // namespace bench
