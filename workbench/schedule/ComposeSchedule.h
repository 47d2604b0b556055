#pragma once

#include <string>

#include "SchedulePlace.h"

namespace workbench {

// Composes the text that the driver writes to a device. With mistakes the text is empty: the driver would
// refuse it, or write something that cannot be read again. What it changes without refusing is in
// ScheduleLosses.h.
struct ComposedSchedule {
    std::string text;
    ScheduleRemarks mistakes;
};

ComposedSchedule Compose(WeeklySchedule const& schedule);
ComposedSchedule Compose(ExceptionSchedule const& schedule);

}  // namespace workbench
