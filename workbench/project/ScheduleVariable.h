#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Project.h"
#include "ValueNames.h"

namespace workbench {

// Variables on the schedules of a Schedule object, whose values are texts (docs/schedules.md).

enum class ScheduleKind { None, Weekly, Exception };
ScheduleKind ScheduleKindOf(VariableConfig const& variable);

// What the project says of the values of the schedule: the unit and the state texts of the variable, or else
// those of the variable on the present value of the same object.
ValueNames ScheduleNamesOf(BlockConfig const& block, VariableConfig const& variable);

// The text for the driver that a person means. A text that begins like one of the driver stays as it is;
// another is read as ScheduleForPeople.h has it. ProjectError for a text that is neither, for a schedule that
// the driver cannot write, and for numbers of which the device would receive others.
std::string ScheduleTextOf(VariableConfig const& variable, std::string const& text, ValueNames const& names);

// The text of the driver as people write it, as ScheduleTextOf reads it. No value for a text that cannot be
// read, and for a variable that is not on a schedule.
std::optional<std::string> ScheduleForPeopleOf(VariableConfig const& variable, std::string_view text,
                                               ValueNames const& names);

}  // namespace workbench
