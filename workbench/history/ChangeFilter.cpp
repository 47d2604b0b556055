#include "ChangeFilter.h"

#include "Difference.h"

namespace workbench {

namespace {

bool HasOtherWrite(WriteState const& shown, WriteState const& now) {
    return shown.stage != now.stage || shown.reason != now.reason || shown.device != now.device ||
           static_cast<OpcUa_Variant const&>(shown.value) != now.value;
}

}  // namespace

bool ChangeFilter::HasChanged(VariableSnapshot const& shown, VariableSnapshot const& now) const {
    return shown.state.Status != now.state.Status || shown.suspect != now.suspect ||
           HasOtherWrite(shown.write, now.write) ||
           HasOtherValue(*now.config, shown.state.Value, now.state.Value, deadBand);
}

BlockChange ChangeFilter::Take(BlockSnapshot const& block) {
    BlockChange change;
    auto const [found, isNew] = blocks.try_emplace(block.config);
    Shown& shown = found->second;
    bool const isWhole = isNew || shown.variables.size() != block.variables.size();
    if (isWhole) {
        shown.variables = block.variables;
    }
    for (std::size_t i = 0; i < block.variables.size(); ++i) {
        if (isWhole || HasChanged(shown.variables[i], block.variables[i])) {
            change.variables.push_back(i);
            shown.variables[i] = block.variables[i];
        }
    }
    change.isState = isWhole || !HasSameState(shown.block, block);
    if (change.isState) {
        shown.block = WithoutVariables(block);
    }
    return change;
}

}  // namespace workbench
