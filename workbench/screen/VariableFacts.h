#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Event.h"
#include "History.h"
#include "LogLine.h"
#include "ObjectInspector.h"

namespace workbench {

// What the details of a variable show besides the newest cycle.
struct VariableFacts {
    std::vector<Sample> trend;  // between the two times
    long long trendFrom = 0;
    long long trendTo = 0;
    std::vector<Event> events;                     // its newest ones, oldest first
    std::vector<LogLine> log;                      // its newest lines, oldest first
    std::shared_ptr<Inspection const> inspection;  // null: nothing was asked
};

}  // namespace workbench
