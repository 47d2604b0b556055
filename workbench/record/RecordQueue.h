#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// The cycles that wait to be recorded, oldest first. They are shared, not copied. Thread-safe; a call holds
// the lock for no longer than it takes to move pointers; what is dropped is freed without it.
class RecordQueue {
public:
    // Values of variables that wait; of more, the oldest cycles are dropped. The newest cycle is always kept.
    static constexpr std::size_t MostValues = 250000;

    explicit RecordQueue(std::size_t mostValues = MostValues) : most(mostValues) {}

    void Add(SharedSnapshot const& block);
    // Takes the oldest cycles, of about that many values together.
    std::vector<SharedSnapshot> Take(std::size_t values);
    // Those that could not be recorded, back in their place.
    void PutBack(std::vector<SharedSnapshot> const& cycles);

    bool IsEmpty() const;
    // The cycles that have been dropped since the last call.
    unsigned long long TakeDropped();

private:
    std::vector<SharedSnapshot> TakeTooMany();

    std::size_t const most;
    mutable std::mutex mutex;
    std::deque<SharedSnapshot> waiting;
    std::size_t values = 0;  // of waiting
    unsigned long long dropped = 0;
};

}  // namespace workbench
