#pragma once

#include <string>
#include <vector>

#include "ScheduleModel.h"

namespace workbench {

// What becomes of a schedule that is written through the driver and read again (docs/schedules.md, "What
// changes when a text is written back").
enum class LossKind {
    Number,    // the device receives another number: 0 or 1 for an Unsigned or a Signed
    Decimals,  // the device receives a number that is cut to six decimals
    Wildcard,  // the device receives 0 where the standard has 255 for "any"
    Reading    // the device receives it as it is, but the text that is read again shows something else
};

struct ScheduleLoss {
    LossKind kind;
    std::string place;  // as in SchedulePlace.h
    std::string reason;
};

// In the order of the schedule. What cannot be written at all is a mistake of Compose (ComposeSchedule.h) and
// not here: to say all of a schedule that cannot be carried, show both.
std::vector<ScheduleLoss> Losses(WeeklySchedule const& schedule);
std::vector<ScheduleLoss> Losses(ExceptionSchedule const& schedule);

}  // namespace workbench
