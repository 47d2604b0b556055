#include "PublishedQuality.h"

#include <algorithm>

namespace workbench {

QualityKind PublishedQuality(BlockSnapshot const& block, VariableSnapshot const& variable) {
    if (IsFault(block)) {
        return QualityKind::Bad;
    }
    QualityKind const own = KindOf(variable.state.Status);
    return block.isStandby ? std::max(own, QualityKind::Uncertain) : own;
}

char const* QualityName(QualityKind quality) {
    switch (quality) {
        case QualityKind::Good:
            return "good";
        case QualityKind::Uncertain:
            return "uncertain";
        default:
            return "bad";
    }
}

}  // namespace workbench
