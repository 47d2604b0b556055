#include "ValueText.h"

#include "HexText.h"
#include "NumberText.h"
#include "Printable.h"
#include "QualityText.h"
#include "TimeText.h"

namespace workbench {

namespace {

std::string VisibleText(std::string const& text) {
    return text.empty() ? "\"\"" : text;
}

}  // namespace

std::string_view View(OpcUa_Octets const& octets) {
    return octets.Length > 0 ? std::string_view(octets.Data, static_cast<std::size_t>(octets.Length))
                             : std::string_view();
}

std::string ValueText(OpcUa_Variant const& value, long long localDiff) {
    switch (value.Datatype) {
        case OpcUaType_Boolean:
            return value.Value.Boolean ? "true" : "false";
        case OpcUaType_SByte:
            return std::to_string(value.Value.SByte);
        case OpcUaType_Byte:
            return std::to_string(value.Value.Byte);
        case OpcUaType_Int16:
            return std::to_string(value.Value.Int16);
        case OpcUaType_UInt16:
            return std::to_string(value.Value.UInt16);
        case OpcUaType_Int32:
            return std::to_string(value.Value.Int32);
        case OpcUaType_UInt32:
            return std::to_string(value.Value.UInt32);
        case OpcUaType_Int64:
            return std::to_string(value.Value.Int64);
        case OpcUaType_UInt64:
            return std::to_string(value.Value.UInt64);
        case OpcUaType_Float:
            return tools::NumberText(value.Value.Float);
        case OpcUaType_Double:
            return tools::NumberText(value.Value.Double);
        case OpcUaType_DateTime:
            return IsoValue(value.Value.DateTime, localDiff);
        case OpcUaType_String:
            return VisibleText(tools::Printable(View(value.Value.Octets)));
        case OpcUaType_ByteString:
            return VisibleText(tools::HexText(View(value.Value.Octets), tools::HexDigits::Lower));
        case OpcUaType_StatusCode:
            return StatusText(value.Value.StatusCode);
        case OpcUaType_DataValue:
            return ValueText(value.Value.DataValue->Value, localDiff);
        default:
            return "-";
    }
}

}  // namespace workbench
