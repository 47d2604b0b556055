#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "Snapshot.h"

namespace workbench {

// What of a cycle differs from what was shown last.
struct BlockChange {
    std::vector<std::size_t> variables;  // indices in the snapshot
    // The first cycle of the block, or it has another state: fault, reason, standby or causes.
    bool isState = false;

    bool IsEmpty() const { return variables.empty() && !isState; }
};

// Finds what has changed in a block since it was shown last. A variable has changed when its value, quality,
// suspect or write has; its time alone does not count. Of numbers only a difference beyond the dead band
// counts, against the value that was shown last, so that a slow drift is shown too; states and Booleans have
// no dead band; a number that becomes NaN has changed. For one thread at a time.
class ChangeFilter {
public:
    explicit ChangeFilter(double widestStep = 0) : deadBand(widestStep) {}

    // What has changed; it counts as shown from now on. Everything of a block that is not known yet.
    BlockChange Take(BlockSnapshot const& block);
    // The next cycle of each block is whole again.
    void Forget() { blocks.clear(); }

private:
    struct Shown {
        std::vector<VariableSnapshot> variables;
        BlockSnapshot block;  // without variables
    };

    bool HasChanged(VariableSnapshot const& shown, VariableSnapshot const& now) const;

    double deadBand;
    std::map<BlockConfig const*, Shown> blocks;
};

}  // namespace workbench
