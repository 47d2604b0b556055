#include "BrowseSettings.h"

namespace workbench {

standard::ClientSettings BrowseSettings::GentleClient() {
    standard::ClientSettings client;
    client.timeout = std::chrono::milliseconds(2000);
    client.retries = 1;
    client.longestExchange = std::chrono::milliseconds(20000);
    return client;
}

}  // namespace workbench
