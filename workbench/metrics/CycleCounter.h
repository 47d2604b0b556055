#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// What is counted of a block since the run began.
struct BlockCounts {
    static constexpr std::size_t Stages = static_cast<std::size_t>(WriteStage::Refused) + 1;

    unsigned long long faults = 0;                    // cycles that ended in fault
    std::array<unsigned long long, Stages> writes{};  // that came to a stage, by WriteStage
};

// Counts what single snapshots do not have. Thread-safe; a scrape holds the lock of a block for as long as it
// takes to copy its counts.
class CycleCounter {
public:
    // The blocks must outlive the counter.
    explicit CycleCounter(std::deque<BlockConfig> const& blocks);

    // Called after each cycle of a block, on the thread of its task.
    void Follow(SharedSnapshot const& block);
    // In the order of the blocks.
    std::vector<BlockCounts> Counts() const;

private:
    struct Counted {
        mutable std::mutex mutex;
        BlockCounts counts;
        SharedSnapshot last;  // for the thread of the task
    };

    std::deque<Counted> counted;
    std::map<BlockConfig const*, Counted*> byBlock;  // not changed after the constructor
};

}  // namespace workbench
