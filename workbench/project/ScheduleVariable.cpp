#include "ScheduleVariable.h"

#include "ComposeSchedule.h"
#include "ProjectError.h"
#include "PropertyId.h"
#include "ReadSchedule.h"
#include "ScheduleForPeople.h"
#include "ScheduleLosses.h"
#include "ShownValue.h"
#include "Units.h"

namespace workbench {

namespace {

constexpr int ScheduleObject = 17;  // BACnetObjectType

bool IsOn(VariableConfig const& variable, standard::PropertyId property) {
    return variable.property && variable.property->bacnetNumber == static_cast<int>(property);
}

bool HasSameObject(VariableConfig const& left, VariableConfig const& right) {
    return left.objectType == right.objectType && left.objectNumber == right.objectNumber;
}

// Whether the device would receive another value, which nobody wants to set.
bool IsOtherValue(ScheduleLoss const& loss) {
    return loss.kind == LossKind::Number || loss.kind == LossKind::Decimals;
}

template <typename Schedule>
std::string Composed(TypedSchedule<Schedule> const& typed) {
    if (!typed.schedule) {
        throw ProjectError(typed.mistake);
    }
    for (ScheduleLoss const& loss : Losses(*typed.schedule)) {
        if (IsOtherValue(loss)) {
            throw ProjectError(RemarkText({loss.place, loss.reason}));
        }
    }
    ComposedSchedule const composed = Compose(*typed.schedule);
    if (!composed.mistakes.empty()) {
        throw ProjectError(RemarkText(composed.mistakes.front()));
    }
    return composed.text;
}

}  // namespace

ScheduleKind ScheduleKindOf(VariableConfig const& variable) {
    if (!variable.objectType || variable.objectType->bacnetNumber != ScheduleObject) {
        return ScheduleKind::None;
    }
    return IsOn(variable, standard::PropertyId::Weekly_Schedule)      ? ScheduleKind::Weekly
           : IsOn(variable, standard::PropertyId::Exception_Schedule) ? ScheduleKind::Exception
                                                                      : ScheduleKind::None;
}

ValueNames ScheduleNamesOf(BlockConfig const& block, VariableConfig const& variable) {
    ValueNames names;
    names.unit = UnitText(variable.unit);
    names.stateTexts = variable.stateTexts;
    for (VariableConfig const& other : block.variables) {
        if (!HasSameObject(other, variable) || !IsOn(other, standard::PropertyId::Present_Value)) {
            continue;
        }
        if (names.unit.empty()) {
            names.unit = UnitText(other.unit);
        }
        if (names.stateTexts.empty()) {
            names.stateTexts = other.stateTexts;
        }
        if (ValueType(other) == OpcUaType_Boolean) {
            names.type = ScheduleValueType::Boolean;
        }
        break;
    }
    return names;
}

std::string ScheduleTextOf(VariableConfig const& variable, std::string const& text, ValueNames const& names) {
    ScheduleKind const kind = ScheduleKindOf(variable);
    if (kind == ScheduleKind::None || IsDriverText(text)) {
        return text;
    }
    return kind == ScheduleKind::Weekly ? Composed(WeeklyOfPeople(text, names))
                                        : Composed(ExceptionOfPeople(text, names));
}

std::optional<std::string> ScheduleForPeopleOf(VariableConfig const& variable, std::string_view text,
                                               ValueNames const& names) {
    ScheduleKind const kind = ScheduleKindOf(variable);
    if (kind == ScheduleKind::Weekly) {
        auto const reading = ReadWeekly(text);
        return reading.schedule ? std::optional(WeeklyForPeople(*reading.schedule, names)) : std::nullopt;
    }
    if (kind == ScheduleKind::Exception) {
        auto const reading = ReadException(text);
        return reading.schedule ? std::optional(ExceptionForPeople(*reading.schedule, names)) : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace workbench
