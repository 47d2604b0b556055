#pragma once

#include <string_view>

#include "ScheduleModel.h"

namespace workbench {

// A period as people type it: as PeriodText and PeriodWords write it, in any letter case (PeriodWords.h).
// Throws TypingMistake (TypedValue.h).
Period TypedPeriodOf(std::string_view text);

}  // namespace workbench
