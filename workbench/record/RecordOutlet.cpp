#include "RecordOutlet.h"

#include <chrono>

#include "BackgroundThread.h"

namespace workbench {

RecordOutlet::RecordOutlet(std::string const& path, RecordLimits const& limits, OutletParts const& parts)
    : status("recording", parts.log),
      recorder(path, limits, {parts.version, parts.project, parts.blocks, parts.tasks}, parts.memory.events,
               status),
      history(path, parts.blocks, parts.memory.trends) {}

RecordOutlet::~RecordOutlet() {
    StopThread();
}

void RecordOutlet::Start() {
    thread = StartBackgroundThread([this] { Run(); });
}

void RecordOutlet::Run() {
    auto next = std::chrono::steady_clock::now();
    std::unique_lock<std::mutex> lock(mutex);
    while (!isStopping) {
        lock.unlock();
        recorder.Step();
        next = std::max(next + std::chrono::seconds(1), std::chrono::steady_clock::now());
        lock.lock();
        stopping.wait_until(lock, next, [this] { return isStopping; });
    }
}

void RecordOutlet::StopThread() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        isStopping = true;
    }
    stopping.notify_all();
    if (thread.joinable()) {
        thread.join();
    }
}

void RecordOutlet::End() {
    StopThread();
    history.Close();
    recorder.End();
}

}  // namespace workbench
