#include "BlockTask.h"

namespace workbench {

TaskConfig const* TaskOf(BlockConfig const& block, std::vector<TaskConfig> const& tasks) {
    for (TaskConfig const& task : tasks) {
        if (block.task.empty() || task.name == block.task) {
            return &task;
        }
    }
    return nullptr;
}

}  // namespace workbench
