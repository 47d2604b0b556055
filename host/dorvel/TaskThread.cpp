// The threads of the tasks.

#include <exception>

#include "RuntimeImpl.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/Trace.h"

namespace dorvel {
namespace {

using Clock = std::chrono::steady_clock;

// Cycles start at multiples of the period; starts that a long cycle has overrun are skipped.
Clock::time_point NextStart(Clock::time_point start, std::chrono::milliseconds period) {
    Clock::time_point const now = Clock::now();
    if (period.count() == 0) {
        return now;
    }
    auto const late = now - start;
    return start + period * (late > period ? late / period + (late % period != late.zero() ? 1 : 0) : 1);
}

}  // namespace

void Runtime::Impl::RunBlock(BlockEntry& entry) {
    if (onBegin) {
        onBegin(*entry.block);
    }
    bool const ran = entry.block->Cycle();
    ++entry.cycles;
    if (observer) {
        observer(*entry.block, entry.cycles, ran);
    }
}

void Runtime::Impl::RunCycles(STTask const& task, std::vector<BlockEntry*> const& taskBlocks,
                              unsigned long long cycles) {
    std::chrono::milliseconds const period(task.settings.PeriodMilliseconds);
    Clock::time_point start = Clock::now();
    for (unsigned long long cycle = 0; cycles == 0 || cycle < cycles; ++cycle) {
        if (cycle != 0) {
            start = NextStart(start, period);
            if (!WaitUntil(start)) {
                return;
            }
        }
        for (BlockEntry* const entry : taskBlocks) {
            if (MustStop()) {
                return;
            }
            RunBlock(*entry);
        }
    }
}

void Runtime::Impl::RunTask(STTask const& task, std::vector<BlockEntry*> const& taskBlocks,
                            unsigned long long cycles) {
    try {
        RunCycles(task, taskBlocks, cycles);
    } catch (std::exception const& failure) {
        logMsg("Task '%s' has ended: %s\n", task.settings.Name.c_str(), failure.what());
    } catch (...) {
        logMsg("Task '%s' has ended: Unknown error\n", task.settings.Name.c_str());
    }
    std::lock_guard<std::mutex> const lock(mutex);
    --running;
    changed.notify_all();
}

bool Runtime::Impl::MustStop() {
    std::lock_guard<std::mutex> const lock(mutex);
    return isStopping;
}

bool Runtime::Impl::WaitUntil(Clock::time_point time) {
    std::unique_lock<std::mutex> lock(mutex);
    return !changed.wait_until(lock, time, [this] { return isStopping; });
}

void Runtime::Impl::AskToStop() {
    std::lock_guard<std::mutex> const lock(mutex);
    isStopping = true;
    changed.notify_all();
}

}  // namespace dorvel
