#pragma once

#include <functional>
#include <string>

#include "ClientSettings.h"
#include "Link.h"
#include "LoadedProject.h"
#include "LogBuffer.h"
#include "PollGuard.h"
#include "VerifyReport.h"

namespace workbench {

struct VerifySettings {
    standard::ClientSettings client;
    unsigned long long rounds = 1;
    // Called as the run goes on, with what is done now; null for none.
    std::function<void(std::string const& text)> progress;
};

// Verifies all blocks of a project that has been loaded without write channels, one after another, until the
// rounds are done or the link is stopped. The guard is the environment of the driver.
VerifyReport Verify(LoadedProject& project, PollGuard& guard, LogBuffer const& log, standard::Link& link,
                    VerifySettings const& settings);

}  // namespace workbench
