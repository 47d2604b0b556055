#pragma once

#include <string>

#include "ScheduleModel.h"

namespace workbench {

// The number of a Real or a Double with six decimals, as the driver writes it.
std::string SixDecimals(double number, ScheduleValueType type);

}  // namespace workbench
