#include "ServiceManager.h"

#include <algorithm>

#ifdef WORKBENCH_HAS_SYSTEMD
#include <systemd/sd-daemon.h>

#include <cstdint>
#include <cstdlib>
#endif

namespace workbench {

#ifdef WORKBENCH_HAS_SYSTEMD

ServiceManager::ServiceManager() {
    char const* const socket = std::getenv("NOTIFY_SOCKET");
    isPresent = socket && *socket != '\0';
    std::uint64_t time = 0;
    if (isPresent && sd_watchdog_enabled(0, &time) > 0) {
        watchdog = std::chrono::microseconds(time);
    }
}

void ServiceManager::Send(std::string const& state) {
    if (isPresent) {
        sd_notify(0, state.c_str());
    }
}

#else

ServiceManager::ServiceManager() = default;

void ServiceManager::Send(std::string const&) {}

#endif

void ServiceManager::Ready() {
    Send("READY=1");
}

void ServiceManager::Status(std::string const& text) {
    if (text != status) {
        status = text;
        Send("STATUS=" + text);
    }
}

void ServiceManager::Stopping() {
    Send("STOPPING=1");
}

void ServiceManager::Alive(Clock::time_point now) {
    if (watchdog.count() > 0 && now - alive >= LongestWait()) {
        alive = now;
        Send("WATCHDOG=1");
    }
}

std::chrono::milliseconds ServiceManager::LongestWait() const {
    using std::chrono::milliseconds;
    return watchdog.count() == 0
               ? milliseconds(1000)
               : std::max(milliseconds(1), std::chrono::duration_cast<milliseconds>(watchdog / 2));
}

}  // namespace workbench
