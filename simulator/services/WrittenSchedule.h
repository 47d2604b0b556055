#pragma once

#include "Standard.h"
#include "TagReader.h"
#include "Value.h"

namespace simulator {

// The elements of schedules in write requests. The functions throw ServiceError as those of
// WrittenPrimitive.h do, and Reject for tags that are not those of the datatype. The values of entries have
// any primitive datatype, Null included.

// A BACnetDailySchedule. A strict device accepts no wildcards in the times of its entries.
ValuePtr WrittenDay(TagReader& reader, bool isLenient);
// A BACnetSpecialEvent with any of the four periods and a priority of 1 to 16. A lenient device also accepts
// a BACnetWeekNDay with 0, which the standard does not define, and keeps it unchanged.
ValuePtr WrittenEvent(TagReader& reader, bool isLenient);

// A BACnetDateRange: two dates.
void CopyDateRange(TagReader& reader, TagWriter& writer);

}  // namespace simulator
