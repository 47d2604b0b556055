#include "Difference.h"

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

// Counts and times of a cause change from cycle to cycle.
bool HasSameCauses(BlockSnapshot const& left, BlockSnapshot const& right) {
    return std::equal(left.causes.begin(), left.causes.end(), right.causes.begin(), right.causes.end(),
                      [](Cause const& one, Cause const& other) {
                          return one.kind == other.kind && one.object == other.object;
                      });
}

}  // namespace

bool HasOtherValue(VariableConfig const& variable, OpcUa_VariantHlp const& shown, OpcUa_VariantHlp const& now,
                   double deadBand) {
    if (static_cast<OpcUa_Variant const&>(shown) == now) {
        return false;
    }
    bool const isQuantity = deadBand > 0 && StatesOf(variable) == States::None && IsNumeric(now.GetType()) &&
                            IsNumeric(shown.GetType());
    return !isQuantity || IsBeyond(shown, now, deadBand);
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

}  // namespace workbench
