#include "PlantState.h"

#include "QualityText.h"

namespace workbench {

namespace {

bool Differ(VariableSnapshot const& before, VariableSnapshot const& after) {
    return before.state.Status != after.state.Status || before.suspect != after.suspect ||
           before.write.stage != after.write.stage || before.state.Value != after.state.Value;
}

void NoteChanges(BlockSnapshot const& before, BlockSnapshot const& after, std::vector<long long>& times) {
    for (std::size_t i = 0; i < after.variables.size(); ++i) {
        if (Differ(before.variables[i], after.variables[i])) {
            times[i] = after.time;
        }
    }
}

}  // namespace

WriteState const& PlantState::WriteOf(VariableSnapshot const& variable) const {
    auto const found = variable.config->write ? writes.find(variable.config) : writes.end();
    return found == writes.end() ? variable.write : found->second;
}

bool IsBad(VariableSnapshot const& variable, WriteState const& write) {
    return KindOf(variable.state.Status) != QualityKind::Good || !variable.suspect.empty() ||
           write.stage == WriteStage::Refused || write.stage == WriteStage::Differs ||
           write.stage == WriteStage::Unconfirmed;
}

void ChangeTimes::Follow(BlockList const& blocks) {
    times.resize(blocks.size());
    latest.resize(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        times[i].resize(blocks[i]->variables.size());
        if (latest[i] && latest[i] != blocks[i] && latest[i]->cycle > 0) {
            NoteChanges(*latest[i], *blocks[i], times[i]);
        }
    }
    latest = blocks;
}

}  // namespace workbench
