#include "Backoff.h"

#include <algorithm>

namespace workbench {

Backoff::Milliseconds Backoff::Next() {
    Milliseconds const pause = whole;
    whole = std::min(whole * 2, Longest);
    std::uniform_int_distribution<Milliseconds::rep> less(0, pause.count() / 4);
    return pause - Milliseconds(less(random));
}

Backoff::Milliseconds Backoff::NextAfter(Milliseconds lasted) {
    if (lasted >= Steady) {
        whole = Shortest;
    }
    return Next();
}

}  // namespace workbench
