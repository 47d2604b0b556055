#include "BrowseSettings.h"

#include "Pace.h"

namespace workbench {

standard::ClientSettings BrowseSettings::GentleClient() {
    standard::ClientSettings client;
    client.timeout = std::chrono::milliseconds(2000);
    client.retries = 1;
    client.longestExchange = std::chrono::milliseconds(20000);
    return client;
}

standard::ClientSettings PacedClient(BrowseSettings const& settings) {
    standard::ClientSettings client = settings.client;
    client.spacing = standard::SpacingOfRate(settings.rate.value_or(LocalRate));
    client.routedSpacing = standard::SpacingOfRate(settings.rate.value_or(RemoteRate));
    return client;
}

std::string ProgressText(BrowseProgress const& progress) {
    std::string const count =
        std::to_string(progress.objectsRead) + " of " + std::to_string(progress.objectCount);
    return progress.isObjectList ? "object list, " + count : count + " objects";
}

}  // namespace workbench
