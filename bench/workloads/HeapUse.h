#pragma once

#include <string>

#include "Clients.h"
#include "Heap.h"
#include "HostedBlocks.h"

namespace bench {

// What a poll takes from the heap, and what is held between polls, per object. Programs that use it link
// Heap.cpp (tests/support).
struct HeapUse {
    double allocations = 0;
    double octets = 0;  // allocated in a poll, freed or not
    double held = 0;    // octets held between polls, without those of the surroundings
    double peak = 0;    // octets held at the most during a poll
};

inline void SetUp(Clients&) {}
inline void SetUp(HostedBlocks& blocks) {
    blocks.Make();
    blocks.Init();
}

inline void Poll(Clients& clients) {
    clients.Poll();
}
inline void Poll(HostedBlocks& blocks) {
    blocks.RunOnce();
}

// Octets held without any client or block: the prepared answers, the host's runtime.
template <class Polled>
long long Surroundings(std::string const& workload) {
    long long const before = test::HeapOctets();
    Polled const none(workload, 0, 0);
    return test::HeapOctets() - before;
}

// Of so many clients or blocks with so many objects each. The second poll is measured, since the first one
// also builds tables. The add-in must be loaded for blocks.
template <class Polled>
HeapUse HeapUseOf(std::string const& workload, int objects, int count = 1) {
    {
        Polled first(workload, 1, 1);
        SetUp(first);
        Poll(first);
    }
    long long const without = test::HeapOctets() + Surroundings<Polled>(workload);
    Polled polled(workload, objects, count);
    SetUp(polled);
    Poll(polled);
    long long const held = test::HeapOctets() - without;
    test::ForgetHeapPeak();
    test::HeapTotals const before = test::HeapTotalsSoFar();
    Poll(polled);
    test::HeapTotals const after = test::HeapTotalsSoFar();

    auto const perObject = [&](long long number) {
        return static_cast<double>(number) / static_cast<double>(polled.Objects());
    };
    HeapUse use;
    use.allocations = perObject(after.allocations - before.allocations);
    use.octets = perObject(after.octets - before.octets);
    use.held = perObject(held);
    use.peak = perObject(test::HeapPeak() - without);
    return use;
}

}  // namespace bench
