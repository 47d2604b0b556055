#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// The newest snapshot of each block, for any number of readers. They share the snapshots and copy none.
// Thread-safe. A call holds the lock for no longer than it takes to exchange or copy pointers.
class PlantBoard {
public:
    // The blocks before their first cycle, in the order in which readers get them. Their configuration must
    // outlive the board.
    explicit PlantBoard(std::vector<SharedSnapshot> first);
    PlantBoard(PlantBoard const&) = delete;
    PlantBoard& operator=(PlantBoard const&) = delete;

    // Replaces the snapshot of its block; one of a block that the board does not have is ignored. Call it
    // after the histories of the cycle are complete: it wakes the readers.
    void Put(SharedSnapshot snapshot);

    // Null for a block that the board does not have.
    SharedSnapshot Latest(BlockConfig const& block) const;
    std::vector<SharedSnapshot> All() const;

    // Rises with every Put, from 0.
    unsigned long long Generation() const;
    // Waits until the generation is another one than `seen`, or the time is over, or the board is closed.
    // Returns the generation.
    unsigned long long Wait(unsigned long long seen, std::chrono::milliseconds timeout) const;
    // Ends all waits, also later ones. For the end of a run.
    void Close();
    bool IsClosed() const;

private:
    std::map<BlockConfig const*, std::size_t> indices;  // not changed after the constructor
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::vector<SharedSnapshot> blocks;
    unsigned long long generation = 0;
    bool isClosed = false;
};

}  // namespace workbench
