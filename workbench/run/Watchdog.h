#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace workbench {

// Calls a function, once, on a thread of its own, unless it is destroyed before the time is over. For work
// that cannot be stopped from within, such as a text search of the script library.
class Watchdog {
public:
    Watchdog(std::chrono::milliseconds time, std::function<void()> expired);
    Watchdog(Watchdog const&) = delete;
    Watchdog& operator=(Watchdog const&) = delete;
    ~Watchdog();

private:
    std::mutex mutex;
    std::condition_variable wake;
    bool done = false;
    std::thread thread;
};

}  // namespace workbench
