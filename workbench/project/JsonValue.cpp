#include "JsonValue.h"

#include <cmath>

#include "NumberText.h"
#include "TimeText.h"
#include "ValueText.h"

namespace workbench {

namespace {

// Writes the shortest text of the number; RapidJSON would write a float with the digits of a double.
template <typename Number>
void WriteAnyNumber(JsonWriter& writer, Number value) {
    std::string const text = tools::NumberText(value);
    if (std::isfinite(value)) {
        writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    } else {
        WriteText(writer, text);
    }
}

}  // namespace

void WriteNumber(JsonWriter& writer, double value) {
    WriteAnyNumber(writer, value);
}

void WriteValue(JsonWriter& writer, OpcUa_Variant const& value, long long localDiff) {
    switch (value.Datatype) {
        case OpcUaType_Null:
            writer.Null();
            break;
        case OpcUaType_Boolean:
            writer.Bool(value.Value.Boolean);
            break;
        case OpcUaType_Float:
            WriteAnyNumber(writer, value.Value.Float);
            break;
        case OpcUaType_Double:
            WriteAnyNumber(writer, value.Value.Double);
            break;
        case OpcUaType_String:
            WriteText(writer, std::string(View(value.Value.Octets)));
            break;
        case OpcUaType_DateTime:
            WriteText(writer, IsoTime(value.Value.DateTime, localDiff));
            break;
        case OpcUaType_DataValue:
            WriteValue(writer, value.Value.DataValue->Value, localDiff);
            break;
        case OpcUaType_ByteString:
        case OpcUaType_StatusCode:
            WriteText(writer, ValueText(value, localDiff));
            break;
        default: {
            std::string const digits = ValueText(value, localDiff);
            writer.RawValue(digits.data(), digits.size(), rapidjson::kNumberType);
        }
    }
}

}  // namespace workbench
