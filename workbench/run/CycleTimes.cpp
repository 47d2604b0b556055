#include "CycleTimes.h"

#include <cstddef>

#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long Millisecond = 10'000;

std::size_t TaskOf(BlockConfig const& block, std::vector<TaskConfig> const& tasks) {
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        if (tasks[i].name == block.task) {
            return i;
        }
    }
    return 0;
}

}  // namespace

CycleTimes::CycleTimes(std::vector<TaskConfig> const& tasks, std::deque<BlockConfig> const& blocks) {
    for (TaskConfig const& task : tasks) {
        taskTimes.push_back({task.period * Millisecond});
    }
    for (BlockConfig const& block : blocks) {
        TaskTimes& task = taskTimes.at(TaskOf(block, tasks));
        task.first = task.first ? task.first : &block;
        blockTimes[&block].task = &task;
    }
}

void CycleTimes::Begin(BlockConfig const& block) {
    BlockTimes& times = blockTimes.at(&block);
    times.begin = dorvel::Environment().SteadyNow();
    if (times.task->first == &block) {
        times.task->begin = times.begin;
        times.task->isOverrun = false;
    }
}

CycleFigures CycleTimes::End(BlockConfig const& block) {
    BlockTimes& times = blockTimes.at(&block);
    TaskTimes& task = *times.task;
    long long const now = dorvel::Environment().SteadyNow();
    times.durations.Add(now - times.begin);
    if (now - task.begin > task.period && !task.isOverrun) {
        task.isOverrun = true;
        ++task.overruns;
    }
    return FiguresOf(block);
}

CycleFigures CycleTimes::FiguresOf(BlockConfig const& block) const {
    BlockTimes const& times = blockTimes.at(&block);
    Durations<128> const& durations = times.durations;
    return {durations.Count(), durations.Last(), durations.Median(), durations.Maximum(),
            times.task->overruns};
}

}  // namespace workbench
