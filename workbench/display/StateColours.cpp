#include "StateColours.h"

#include "QualityText.h"

namespace workbench {

Colour QualityColour(OpcUa_StatusCode status) {
    if (status == OpcUa_BadNoData) {
        return Colour::Dim;
    }
    switch (KindOf(status)) {
        case QualityKind::Good:
            return Colour::Green;
        case QualityKind::Uncertain:
            return Colour::Yellow;
        default:
            return Colour::Red;
    }
}

Colour WriteColour(WriteStage stage) {
    switch (stage) {
        case WriteStage::Written:
            return Colour::Green;
        case WriteStage::Refused:
        case WriteStage::Differs:
            return Colour::Red;
        case WriteStage::None:
            return Colour::None;
        default:
            return Colour::Yellow;
    }
}

Colour BlockColour(BlockSnapshot const& block) {
    bool const isIdle = block.cycle == 0 || block.isStandby;
    return isIdle ? Colour::Dim : IsFault(block) ? Colour::Red : Colour::Green;
}

}  // namespace workbench
