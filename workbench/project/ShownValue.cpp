#include "ShownValue.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "Printable.h"
#include "PropertyId.h"
#include "Units.h"
#include "ValueText.h"

namespace workbench {

namespace {

// Object types by their numbers in the standard.
enum : int { BinaryInput = 3, BinaryOutput = 4, BinaryValue = 5, MultiStateInput = 13 };
enum : int { MultiStateOutput = 14, Schedule = 17, MultiStateValue = 19 };

bool IsState(VariableConfig const& variable) {
    constexpr standard::PropertyId properties[] = {standard::PropertyId::Present_Value,
                                                   standard::PropertyId::Feedback_Value,
                                                   standard::PropertyId::Relinquish_Default};
    return std::any_of(std::begin(properties), std::end(properties), [&](standard::PropertyId property) {
        return static_cast<int>(property) == variable.property->bacnetNumber;
    });
}

OpcUa_Variant const& Inner(OpcUa_Variant const& value) {
    return value.Datatype == OpcUaType_DataValue ? value.Value.DataValue->Value : value;
}

// The state that a number is; none for another value.
std::optional<std::uint64_t> NumberOf(OpcUa_Variant const& value) {
    auto const whole = [](auto number) {
        auto const real = static_cast<double>(number);
        bool const isState = real >= 0 && real < 4294967296.0 && std::trunc(real) == real;
        return isState ? std::optional(static_cast<std::uint64_t>(number)) : std::nullopt;
    };
    switch (value.Datatype) {
        case OpcUaType_SByte:
            return whole(value.Value.SByte);
        case OpcUaType_Byte:
            return whole(value.Value.Byte);
        case OpcUaType_Int16:
            return whole(value.Value.Int16);
        case OpcUaType_UInt16:
            return whole(value.Value.UInt16);
        case OpcUaType_Int32:
            return whole(value.Value.Int32);
        case OpcUaType_UInt32:
            return whole(value.Value.UInt32);
        case OpcUaType_Int64:
            return whole(value.Value.Int64);
        case OpcUaType_UInt64:
            return whole(value.Value.UInt64);
        case OpcUaType_Float:
            return whole(value.Value.Float);
        case OpcUaType_Double:
            return whole(value.Value.Double);
        default:
            return std::nullopt;
    }
}

// The place of the state among the texts; none if it has none.
std::optional<std::size_t> PlaceOf(VariableConfig const& variable, OpcUa_Variant const& value) {
    States const states = StatesOf(variable);
    if (value.Datatype == OpcUaType_Boolean) {
        bool const isState = states == States::FromZero;
        return isState ? std::optional<std::size_t>(value.Value.Boolean ? 1 : 0) : std::nullopt;
    }
    auto const number = states == States::None ? std::nullopt : NumberOf(value);
    std::size_t const first = states == States::FromOne ? 1 : 0;
    return number && *number >= first ? std::optional<std::size_t>(*number - first) : std::nullopt;
}

}  // namespace

_OpcUa_BuiltInType ValueType(VariableConfig const& variable) {
    return variable.type.Type == OpcUaType_DataValue ? variable.type.ElementType : variable.type.Type;
}

bool IsNumeric(_OpcUa_BuiltInType type) {
    return type >= OpcUaType_SByte && type <= OpcUaType_Double;
}

States StatesOf(VariableConfig const& variable) {
    if (!IsState(variable)) {
        return States::None;
    }
    switch (variable.objectType->bacnetNumber) {
        case BinaryInput:
        case BinaryOutput:
        case BinaryValue:
            return States::FromZero;
        case MultiStateInput:
        case MultiStateOutput:
        case MultiStateValue:
            return States::FromOne;
        case Schedule:
            return ValueType(variable) == OpcUaType_Boolean ? States::FromZero
                   : ValueType(variable) < OpcUaType_Float  ? States::FromOne
                                                            : States::None;
        default:
            return States::None;
    }
}

bool HasUnit(VariableConfig const& variable) {
    bool const isQuantity =
        StatesOf(variable) == States::None || variable.objectType->bacnetNumber == Schedule;
    return !variable.unit.empty() && isQuantity && IsNumeric(ValueType(variable));
}

std::optional<std::string> TextOfState(VariableConfig const& variable, OpcUa_Variant const& value) {
    auto const place = variable.stateTexts.empty() ? std::nullopt : PlaceOf(variable, Inner(value));
    bool const hasText = place && *place < variable.stateTexts.size() && !variable.stateTexts[*place].empty();
    return hasText ? std::optional(variable.stateTexts[*place]) : std::nullopt;
}

std::string ShownValue(VariableConfig const& variable, OpcUa_Variant const& value, long long localDiff) {
    std::string text = ValueText(value, localDiff);
    if (auto const state = TextOfState(variable, value)) {
        text += " (" + tools::Printable(*state) + ")";
    } else if (HasUnit(variable) && Inner(value).Datatype != OpcUaType_Null) {
        std::string const unit = tools::Printable(UnitText(variable.unit));
        text += unit.empty() ? "" : " " + unit;
    }
    return text;
}

}  // namespace workbench
