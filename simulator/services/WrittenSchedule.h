#pragma once

#include "Standard.h"
#include "TagReader.h"
#include "Value.h"

namespace simulator {

// The elements of schedules in write requests. They throw ServiceError like WrittenPrimitive.h, and Reject
// where the tags are not those of the datatype. Values of entries are of any primitive datatype, Null too.

// A BACnetDailySchedule. The times of a strict device's entries have no wildcards.
ValuePtr WrittenDay(TagReader& reader, bool isLenient);
// A BACnetSpecialEvent with any of the four periods and a priority of 1 to 16. A lenient device also takes a
// BACnetWeekNDay with 0 in it, which the standard doesn't know, and keeps it as it is.
ValuePtr WrittenEvent(TagReader& reader, bool isLenient);

// Two dates one after the other: a BACnetDateRange.
void CopyDateRange(TagReader& reader, TagWriter& writer);

}  // namespace simulator
