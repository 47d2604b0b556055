#include "RecordedValue.h"

#include <limits>

#include "NumberText.h"
#include "Printable.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "ValueText.h"

namespace workbench {

namespace {

std::string TextOf(OpcUa_Variant const& value, long long localDiff) {
    switch (value.Datatype) {
        case OpcUaType_String:
            return tools::ValidUtf8(View(value.Value.Octets));
        case OpcUaType_DateTime:
            return IsoTime(value.Value.DateTime, localDiff);
        default:
            return ValueText(value, localDiff);
    }
}

double NumberOf(OpcUa_VariantHlp const& value) {
    if (value.GetType() == OpcUaType_Float) {
        return tools::Widened(value.Value.Float);
    }
    double number = std::numeric_limits<double>::quiet_NaN();
    value.GetDouble(number);
    return number;
}

}  // namespace

RecordedValue ValueToRecord(BlockSnapshot const& block, VariableSnapshot const& variable) {
    RecordedValue recorded;
    OpcUa_VariantHlp const& value = variable.state.Value;
    _OpcUa_BuiltInType const type = value.GetType();
    recorded.isText = type != OpcUaType_Null && !IsNumeric(type) && type != OpcUaType_Boolean;
    recorded.number = std::numeric_limits<double>::quiet_NaN();
    if (recorded.isText) {
        recorded.text = TextOf(value, block.localDiff);
    } else if (type != OpcUaType_Null) {
        recorded.number = NumberOf(value);
    }
    recorded.status = StatusToRecord(block, variable);
    return recorded;
}

OpcUa_StatusCode StatusToRecord(BlockSnapshot const& block, VariableSnapshot const& variable) {
    OpcUa_StatusCode const status = variable.state.Status;
    return block.isStandby && KindOf(status) != QualityKind::Bad ? OpcUa_Bad : status;
}

}  // namespace workbench
