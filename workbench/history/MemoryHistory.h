#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "History.h"
#include "Snapshot.h"

namespace workbench {

// The latest changes of each variable, in memory. A variable has a ring that keeps its newest changes and
// overwrites the oldest; the rings of all variables share MemoryLimit and are given in whole on the first
// number, so that a cycle never moves what it has. Variables of texts, times and octets have no ring.
// Thread-safe; the blocks do not wait for one another.
class MemoryHistory : public History {
public:
    // Octets of all samples together, and the most samples that a variable keeps: with up to 64 variables
    // there are 65,536 of each, with 10,000 variables 419. A plant of more than 4 million variables has no
    // history.
    static constexpr std::size_t MemoryLimit = 64 << 20;
    static constexpr std::size_t MostSamples = 65536;

    // The configuration must outlive the history.
    explicit MemoryHistory(std::deque<BlockConfig> const& blocks, std::size_t memoryLimit = MemoryLimit);
    ~MemoryHistory() override;

    // Keeps what has changed; while the host is the standby, the quality is bad. Called on the thread of the
    // block's task. When the clock of the host has been
    // set back, the samples after the new time are forgotten.
    void Add(BlockSnapshot const& block);

    std::vector<Sample> Samples(VariableConfig const& variable, long long from, long long to,
                                std::size_t most) const override;
    long long Oldest(VariableConfig const& variable) const override;

    // The samples that a variable keeps, and the octets that one takes.
    std::size_t SamplesOfVariable() const { return capacity; }
    static std::size_t OctetsOfSample();

private:
    struct Ring;
    struct Block;

    std::pair<Block const*, Ring const*> Find(VariableConfig const& variable) const;

    std::size_t capacity;
    std::map<BlockConfig const*, std::unique_ptr<Block>> histories;  // not changed after the constructor
    // The block of each variable and its index there.
    std::map<VariableConfig const*, std::pair<Block*, std::size_t>> indices;
};

}  // namespace workbench
