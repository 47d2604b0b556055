#pragma once

#include <deque>
#include <map>
#include <vector>

#include "Durations.h"
#include "Project.h"

namespace workbench {

// How long the cycles of a block took, in 100-nanosecond units.
struct CycleFigures {
    unsigned long long count = 0;
    long long last = 0;
    long long median = 0;  // of the latest 128
    long long maximum = 0;
    // How often all blocks of the task together took longer than its period. The task then leaves out
    // starts.
    unsigned long long overruns = 0;
};

// Measures the cycles of all blocks by the monotonic clock of the host's environment. Begin and End are
// called on the thread of the block's task; two blocks of different tasks share nothing.
class CycleTimes {
public:
    // Blocks must be in the order in which their task calls them. Both references must outlive the object.
    CycleTimes(std::vector<TaskConfig> const& tasks, std::deque<BlockConfig> const& blocks);

    void Begin(BlockConfig const& block);
    // Measures a cycle that ends now. Returns the figures of the block with it.
    CycleFigures End(BlockConfig const& block);
    // The figures without a new cycle. Call it on the thread of the task, or when the runtime has stopped.
    CycleFigures FiguresOf(BlockConfig const& block) const;

private:
    struct TaskTimes {
        long long period;
        BlockConfig const* first = nullptr;  // the block with which a cycle of the task begins
        long long begin = 0;
        bool isOverrun = false;  // the current cycle
        unsigned long long overruns = 0;
    };

    struct BlockTimes {
        TaskTimes* task = nullptr;
        long long begin = 0;
        Durations<128> durations;
    };

    std::deque<TaskTimes> taskTimes;
    std::map<BlockConfig const*, BlockTimes> blockTimes;  // not changed after the constructor
};

}  // namespace workbench
