#include "WorkerThreads.h"

#include <system_error>

namespace workbench {

namespace {

thread_local bool isRefusing = false;

}  // namespace

bool WorkerThreads::IsRefusing() {
    return isRefusing;
}

WorkerThreads::Result WorkerThreads::enqueue(std::function<void()> task) {
    if (!Add(task)) {
        isRefusing = true;
        task();
        isRefusing = false;
    }
    return static_cast<Result>(true);
}

bool WorkerThreads::Add(std::function<void()>& task) {
    std::lock_guard<std::mutex> const lock(mutex);
    bool const needsThread = waiting.size() >= idle;
    if (needsThread && threads.size() >= most && waiting.size() - idle >= longest) {
        return false;
    }
    if (needsThread && threads.size() < most && !StartThread() && threads.empty()) {
        return false;
    }
    waiting.push_back(std::move(task));
    changed.notify_one();
    return true;
}

// Called with the mutex. False if the system has no thread, which must not end the run.
bool WorkerThreads::StartThread() {
    try {
        threads.emplace_back([this] { Work(); });
        ++idle;
        return true;
    } catch (std::system_error const&) {
        return false;
    }
}

void WorkerThreads::Work() {
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return isShutDown || !waiting.empty(); });
        if (waiting.empty()) {
            return;
        }
        std::function<void()> const task = std::move(waiting.front());
        waiting.pop_front();
        --idle;
        lock.unlock();
        task();
        lock.lock();
        ++idle;
    }
}

void WorkerThreads::shutdown() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        isShutDown = true;
    }
    changed.notify_all();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace workbench
