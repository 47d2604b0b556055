#pragma once

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// One value of a constructed datatype; the schedules are in ScheduleReader. Throws Mistake.
ValuePtr ReadConstructed(Datatype datatype, ScriptValue const& value);
bool IsConstructed(Datatype datatype);

// A BACnetDateRange: the two dates of the fields `from` and `to`, each any date if it isn't given.
void WriteDateRange(ScriptValue const& value, TagWriter& writer);

}  // namespace simulator
