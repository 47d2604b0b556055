#include "Event.h"

#include <iterator>

namespace workbench {

namespace {

// In the order of EventKind.
constexpr char const* Names[] = {"fault",       "recovery", "standby", "standby-end", "set",        "written",
                                 "unconfirmed", "differs",  "refused", "suspect",     "suspect-end"};

}  // namespace

char const* EventName(EventKind kind) {
    return Names[static_cast<int>(kind)];
}

}  // namespace workbench
