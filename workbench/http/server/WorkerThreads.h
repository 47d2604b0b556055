#pragma once

#include <httplib.h>

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace workbench {

// The threads of the server: started when they are needed, at most so many. A connection that comes when all
// are busy waits; when too many wait, its task runs at once on the accepting thread, where IsRefusing is
// true.
class WorkerThreads : public httplib::TaskQueue {
public:
    WorkerThreads(std::size_t mostThreads, std::size_t mostWaiting)
        : most(mostThreads), longest(mostWaiting) {}

    // Of the library's type, which differs between its versions.
    using Result = decltype(std::declval<httplib::TaskQueue&>().enqueue(std::function<void()>()));
    Result enqueue(std::function<void()> task) override;
    void shutdown() override;

    // Whether this thread runs a task only so that it refuses its connection.
    static bool IsRefusing();

private:
    bool Add(std::function<void()>& task);
    bool StartThread();
    void Work();

    std::size_t most;
    std::size_t longest;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    std::vector<std::thread> threads;
    std::size_t idle = 0;
    bool isShutDown = false;
};

}  // namespace workbench
