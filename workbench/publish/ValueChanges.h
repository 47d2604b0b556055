#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "PublishedQuality.h"
#include "Snapshot.h"

namespace workbench {

// A variable by its indices: that of the block in the project, its own in the block.
struct VariablePlace {
    std::size_t block = 0;
    std::size_t variable = 0;
};

struct ChangeLimits {
    double deadBand = 0;     // as in ChangeFilter.h
    long long interval = 0;  // the least time between two values of a variable, in 100-nanosecond units
};

// What a receiver still has to get: the difference between the newest cycle of each block and what was sent
// last. However long nothing can be sent, a variable waits at most once, and what is sent then is its newest
// value; one that has returned to the value that was sent waits no longer. Values leave in the order in which
// they began to wait, so that a slow receiver gets all variables in turn.
//
// A variable has changed when its value (beyond the dead band), its quality, PublishedQuality or its suspect
// has; its time and its write do not count. A block has changed when its state, reason, causes or number of
// suspects has. Of a block without a cycle there are no values yet. For one thread at a time; times are file
// times, and a clock that is set back ends the intervals.
class ValueChanges {
public:
    explicit ValueChanges(ChangeLimits changeLimits = {}) : limits(changeLimits) {}

    // The receiver knows nothing: everything waits, without an interval.
    void Forget();
    void Forget(std::size_t block);

    // The newest snapshots, in the order of the project, none of them null. A snapshot that was taken already
    // costs nothing.
    void Take(std::vector<SharedSnapshot> const& newest);

    // The next block whose state has to be sent, or variable whose value has; it counts as sent from now on.
    // Take must have been called since the last Forget(). None if nothing waits, or only for its interval.
    std::optional<std::size_t> NextState();
    std::optional<VariablePlace> NextValue(long long now);
    // The state of the block and all of its values count as sent, as they are in the snapshot taken last.
    void CountAsSent(std::size_t block, long long now);

    // What was taken last. Valid until the next Take.
    std::size_t BlockCount() const { return blocks.size(); }
    BlockSnapshot const& Block(std::size_t block) const { return *blocks[block].newest; }
    std::size_t Suspects(std::size_t block) const { return blocks[block].suspects; }
    VariableSnapshot const& Variable(VariablePlace place) const {
        return Block(place.block).variables[place.variable];
    }

private:
    struct Sent {
        VariableState state;
        std::string suspect;
        QualityKind quality = QualityKind::Bad;
        bool isKnown = false;     // to the receiver
        bool hasChanged = false;  // since it was sent
        bool isQueued = false;    // in values
        bool isResting = false;   // once in resting, for its interval
    };

    struct BlockPart {
        SharedSnapshot newest;
        BlockSnapshot sent;  // without variables
        std::size_t suspects = 0;
        std::size_t sentSuspects = 0;
        bool isKnown = false;
        bool isQueued = false;  // in states
        std::vector<Sent> variables;
    };

    struct Rest {
        VariablePlace place;
        long long since = 0;
    };

    void Compare(std::size_t index);
    void CompareValues(std::size_t index);
    bool HasChanged(BlockPart const& block, std::size_t variable) const;
    void Queue(VariablePlace place);
    void EndRests(long long now);
    void EndRestsOf(std::size_t block);
    void MarkStateSent(BlockPart& block);
    void MarkSent(VariablePlace place, long long now);
    static bool HasOtherState(BlockPart const& block);
    Sent& At(VariablePlace place) { return blocks[place.block].variables[place.variable]; }

    ChangeLimits limits;
    std::vector<BlockPart> blocks;
    std::deque<std::size_t> states;
    std::deque<VariablePlace> values;
    std::deque<Rest> resting;  // oldest first
};

}  // namespace workbench
