#pragma once

#include "dorvelshare/Trace.h"

namespace dorvel::BACnet {

// Writes to the log if the user's trace is on. A text without arguments is a format too: all such texts come
// from tables of the driver and of the C++ library, and none has a directive.
template <class... Arguments>
void Trace(char const* format, Arguments... arguments) {
    if (IsEnableUserTrace()) {
        logMsg(format, arguments...);
    }
}

}  // namespace dorvel::BACnet
