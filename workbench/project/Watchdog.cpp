#include "Watchdog.h"

#include <utility>

namespace workbench {

Watchdog::Watchdog(std::chrono::milliseconds time, std::function<void()> expired)
    : thread([this, time, function = std::move(expired)] {
          std::unique_lock<std::mutex> lock(mutex);
          if (!wake.wait_for(lock, time, [this] { return done; })) {
              lock.unlock();
              function();
          }
      }) {}

Watchdog::~Watchdog() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        done = true;
    }
    wake.notify_one();
    thread.join();
}

}  // namespace workbench
