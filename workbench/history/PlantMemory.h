#pragma once

#include <deque>
#include <vector>

#include "EventList.h"
#include "MemoryHistory.h"
#include "PlantBoard.h"

namespace workbench {

// What a run remembers of its blocks, for all who show it. Thread-safe.
struct PlantMemory {
    // first as in PlantBoard.h. Without trends there are no samples, and no memory is taken for them.
    PlantMemory(std::deque<BlockConfig> const& blocks, std::vector<SharedSnapshot> first, bool hasTrends)
        : board(std::move(first)), trends(blocks, hasTrends ? MemoryHistory::MemoryLimit : 0) {}

    // Takes a cycle in, on the thread of the block's task. The board comes last: who waits for it finds the
    // events and samples of the cycle.
    void Follow(SharedSnapshot const& block) {
        events.Follow(block);
        trends.Add(*block);
        board.Put(block);
    }

    PlantBoard board;
    EventList events;
    MemoryHistory trends;
};

}  // namespace workbench
