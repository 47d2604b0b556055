#pragma once

#include <chrono>
#include <string>

namespace workbench {

// The service manager that has started the program and expects reports, as systemd does of a service with
// Type=notify (sd_notify(3)). Without one, and in a program that was built without DORVEL_SYSTEMD, nothing is
// sent. Used on the main thread only.
class ServiceManager {
public:
    using Clock = std::chrono::steady_clock;

    // Reads NOTIFY_SOCKET, WATCHDOG_USEC and WATCHDOG_PID of the environment.
    ServiceManager();

    bool IsPresent() const { return isPresent; }

    void Ready();
    // One line for people. A text that is not new is not sent again.
    void Status(std::string const& text);
    void Stopping();

    // Call it whenever the main thread goes round, at least every LongestWait: after half of the watchdog's
    // time it reports that the program is alive.
    void Alive(Clock::time_point now);
    // Half of the watchdog's time; a second without a watchdog.
    std::chrono::milliseconds LongestWait() const;

private:
    void Send(std::string const& state);

    bool isPresent = false;
    std::chrono::microseconds watchdog{0};  // 0: none
    Clock::time_point alive{};              // when that was last reported
    std::string status;
};

}  // namespace workbench
