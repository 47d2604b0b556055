#include "ChangeFilter.h"

#include <algorithm>
#include <cmath>

#include "ShownValue.h"

namespace workbench {

namespace {

bool IsBeyond(OpcUa_VariantHlp const& shown, OpcUa_VariantHlp const& now, double deadBand) {
    double before = 0;
    double after = 0;
    shown.GetDouble(before);
    now.GetDouble(after);
    // Also true for NaN, which compares with nothing, and for infinities.
    return !(std::fabs(after - before) <= deadBand);
}

bool HasOtherValue(VariableConfig const& variable, OpcUa_VariantHlp const& shown, OpcUa_VariantHlp const& now,
                   double deadBand) {
    bool const isQuantity =
        StatesOf(variable) == States::None && IsNumeric(now.GetType()) && IsNumeric(shown.GetType());
    bool const isSame = static_cast<OpcUa_Variant const&>(shown) == now;
    return !isSame && (!isQuantity || deadBand <= 0 || IsBeyond(shown, now, deadBand));
}

bool HasOtherWrite(WriteState const& shown, WriteState const& now) {
    return shown.stage != now.stage || shown.reason != now.reason || shown.device != now.device ||
           static_cast<OpcUa_Variant const&>(shown.value) != now.value;
}

// Counts and times of a cause change from cycle to cycle.
bool HasSameCauses(BlockSnapshot const& left, BlockSnapshot const& right) {
    return std::equal(left.causes.begin(), left.causes.end(), right.causes.begin(), right.causes.end(),
                      [](Cause const& one, Cause const& other) {
                          return one.kind == other.kind && one.object == other.object;
                      });
}

bool HasSameState(BlockSnapshot const& left, BlockSnapshot const& right) {
    return (left.cycle == 0) == (right.cycle == 0) && left.isStandby == right.isStandby &&
           IsFault(left) == IsFault(right) && FaultText(left) == FaultText(right) &&
           HasSameCauses(left, right);
}

BlockSnapshot WithoutVariables(BlockSnapshot const& block) {
    BlockSnapshot state;
    state.config = block.config;
    state.cycle = block.cycle;
    state.isReported = block.isReported;
    state.fault = block.fault;
    state.errorText = block.errorText;
    state.isStandby = block.isStandby;
    state.causes = block.causes;
    return state;
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
