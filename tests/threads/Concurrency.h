#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace test {

// Ends the process with a message unless it is destroyed in time, since a deadlock never ends.
class DeadlockWatch {
public:
    explicit DeadlockWatch(std::chrono::seconds patience) : watcher([this, patience] { Watch(patience); }) {}
    ~DeadlockWatch() {
        {
            std::lock_guard<std::mutex> const lock(mutex);
            isOver = true;
        }
        changed.notify_all();
        watcher.join();
    }
    DeadlockWatch(DeadlockWatch const&) = delete;
    DeadlockWatch& operator=(DeadlockWatch const&) = delete;

private:
    void Watch(std::chrono::seconds patience) {
        std::unique_lock<std::mutex> lock(mutex);
        if (!changed.wait_for(lock, patience, [this] { return isOver; })) {
            std::fputs("the test hangs\n", stderr);
            std::abort();
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    bool isOver = false;
    std::thread watcher;
};

// Runs the body on this number of threads, as simultaneously as possible: all wait until the last one is
// ready.
inline void AtOnce(int count, std::function<void(int)> const& body) {
    std::atomic<int> missing{count};
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back([&, number] {
            --missing;
            while (missing > 0) {
                std::this_thread::yield();
            }
            body(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Repeats an action on its own thread for its lifetime.
class Meanwhile {
public:
    explicit Meanwhile(std::function<void(unsigned round)> body)
        : thread([this, body = std::move(body)] {
              for (unsigned round = 0; !isOver; ++round) {
                  body(round);
                  std::this_thread::yield();
              }
          }) {}
    ~Meanwhile() {
        isOver = true;
        thread.join();
    }
    Meanwhile(Meanwhile const&) = delete;
    Meanwhile& operator=(Meanwhile const&) = delete;

private:
    std::atomic<bool> isOver{false};
    std::thread thread;
};

}  // namespace test
