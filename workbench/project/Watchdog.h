#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace workbench {

// Calls a function once, on its own thread, unless it is destroyed before the time is over. For work that
// cannot be interrupted, such as a pattern search in Lua's string library.
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
