#pragma once

#include "dorvelshare/Trace.h"

namespace dorvel::BACnet {

// Writes to the log if the user's trace is on. A text without arguments is a format all the same: the texts
// come from tables of this driver and of the C++ library, none of which has a format directive.
template <class... Arguments>
void Trace(char const* format, Arguments... arguments) {
    if (IsEnableUserTrace()) {
        logMsg(format, arguments...);
    }
}

}  // namespace dorvel::BACnet
