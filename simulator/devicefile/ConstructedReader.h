#pragma once

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// One value of a constructed datatype other than those of schedules (ScheduleReader.h). Throws Mistake.
ValuePtr ReadConstructed(Datatype datatype, ScriptValue const& value);
bool IsConstructed(Datatype datatype);

// A BACnetDateRange: the dates of the fields `from` and `to`. A missing one is unspecified.
void WriteDateRange(ScriptValue const& value, TagWriter& writer);

}  // namespace simulator
