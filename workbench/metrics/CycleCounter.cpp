#include "CycleCounter.h"

namespace workbench {

namespace {

bool IsNewStage(BlockSnapshot const* last, VariableSnapshot const& now, std::size_t index) {
    WriteState const none;
    WriteState const& before = last ? last->variables[index].write : none;
    return now.write.stage != WriteStage::None && before.stage != now.write.stage;
}

}  // namespace

CycleCounter::CycleCounter(std::deque<BlockConfig> const& blocks) {
    for (BlockConfig const& block : blocks) {
        byBlock[&block] = &counted.emplace_back();
    }
}

void CycleCounter::Follow(SharedSnapshot const& block) {
    auto const found = byBlock.find(block->config);
    if (found == byBlock.end()) {
        return;
    }
    Counted& own = *found->second;
    BlockCounts more;
    more.faults = IsFault(*block) ? 1 : 0;
    for (std::size_t i = 0; i < block->variables.size(); ++i) {
        if (IsNewStage(own.last.get(), block->variables[i], i)) {
            ++more.writes[static_cast<std::size_t>(block->variables[i].write.stage)];
        }
    }
    own.last = block;
    std::lock_guard<std::mutex> const lock(own.mutex);
    own.counts.faults += more.faults;
    for (std::size_t i = 0; i < BlockCounts::Stages; ++i) {
        own.counts.writes[i] += more.writes[i];
    }
}

std::vector<BlockCounts> CycleCounter::Counts() const {
    std::vector<BlockCounts> counts;
    for (Counted const& block : counted) {
        std::lock_guard<std::mutex> const lock(block.mutex);
        counts.push_back(block.counts);
    }
    return counts;
}

}  // namespace workbench
