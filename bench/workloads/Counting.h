#pragma once

#if __has_include(<valgrind/callgrind.h>) && !defined(__arm__)
#include <valgrind/callgrind.h>
#endif

namespace bench {

// While false, nothing is counted. A program sets it after a first poll, which also builds tables.
inline bool isCountingAllowed = false;

// Turns the counting of instructions on if it is off, and off if it is on; it begins off. callgrind
// (--collect-atstart=no) counts, and on the target the plugin in bench/stack, which recognises a certain
// instruction without effect. Without either the call costs next to nothing.
inline void ToggleCounting() {
    if (isCountingAllowed) {
#if defined(__arm__)
        asm volatile("nop.w {85}" ::: "memory");
#elif defined(CALLGRIND_TOGGLE_COLLECT)
        CALLGRIND_TOGGLE_COLLECT;
#endif
    }
}

// Toggles the counting for its lifetime: code to be counted is inside one such scope, and code in there that
// is not the driver's is inside a second, nested one.
class CountingToggled {
public:
    CountingToggled() { ToggleCounting(); }
    ~CountingToggled() { ToggleCounting(); }
    CountingToggled(CountingToggled const&) = delete;
    CountingToggled& operator=(CountingToggled const&) = delete;
};

}  // namespace bench
