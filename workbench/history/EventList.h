#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "Event.h"
#include "Snapshot.h"

namespace workbench {

// Finds events by comparing each cycle of a block with the one before it, and keeps the newest. Thread-safe.
class EventList {
public:
    // Events that are kept, and events of one kind that are listed of one cycle; the others of that cycle are
    // counted in one event more.
    static constexpr std::size_t Most = 5000;
    static constexpr std::size_t MostOfCycle = 100;

    // Called after each cycle of a block, on the thread of its task. Keeps the snapshot until the next one of
    // that block.
    void Follow(SharedSnapshot const& snapshot);

    // The events after that id, oldest first; of more than `most` the newest.
    std::vector<Event> Since(unsigned long long id, std::size_t most = Most) const;
    // The same, only of one variable, or of one block and its variables.
    std::vector<Event> Of(VariableConfig const& variable, std::size_t most) const;
    std::vector<Event> Of(BlockConfig const& block, std::size_t most) const;
    // The id of the newest event; 0 without one.
    unsigned long long Newest() const;

private:
    mutable std::mutex mutex;
    std::map<BlockConfig const*, SharedSnapshot> before;
    std::deque<Event> events;
    unsigned long long newest = 0;
};

}  // namespace workbench
