#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "OutletState.h"
#include "Snapshot.h"
#include "WriteState.h"

namespace workbench {

// What the screen shows: the newest cycle of each block, in the order of the project, and the states of the
// values that were set, which may be newer than the cycle; and the outlets of the run.
using BlockList = std::vector<SharedSnapshot>;
using WriteList = std::map<VariableConfig const*, WriteState>;

struct PlantState {
    BlockList blocks;
    WriteList writes;
    std::vector<OutletState> outlets{};

    WriteState const& WriteOf(VariableSnapshot const& variable) const;
};

// True if something about the variable is not as it should be: its quality is not good, its value is suspect,
// or what was set for it is refused, unconfirmed or differs.
bool IsBad(VariableSnapshot const& variable, WriteState const& write);

// When each variable changed last, found by comparing cycles that follow one another.
class ChangeTimes {
public:
    void Follow(BlockList const& blocks);
    // A file time; 0 before the first change. block and variable are indexes.
    long long Of(std::size_t block, std::size_t variable) const { return times[block][variable]; }

private:
    BlockList latest;
    std::vector<std::vector<long long>> times;
};

}  // namespace workbench
