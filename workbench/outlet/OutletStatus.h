#pragma once

#include <mutex>
#include <string>

#include "LogBuffer.h"
#include "OutletState.h"

namespace workbench {

// The state of an outlet while it works. A change is one line of the log, "mqtt: connected to ...".
// Thread-safe.
class OutletStatus {
public:
    // The log must outlive the status.
    OutletStatus(std::string outletName, LogBuffer& runLog);

    // The same health and text again are no change.
    void Set(OutletHealth health, std::string const& text);
    // Adds to a figure; the figures keep the order in which they were first counted.
    void Count(char const* figure, unsigned long long more = 1);

    OutletState State() const;

private:
    LogBuffer& log;
    mutable std::mutex mutex;
    OutletState state;
};

}  // namespace workbench
