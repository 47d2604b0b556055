#include "RecordQueue.h"

#include <utility>

namespace workbench {

namespace {

// A block without variables counts too.
std::size_t ValuesOf(BlockSnapshot const& block) {
    return block.variables.size() + 1;
}

}  // namespace

std::vector<SharedSnapshot> RecordQueue::TakeTooMany() {
    std::vector<SharedSnapshot> tooMany;
    while (values > most && waiting.size() > 1) {
        values -= ValuesOf(*waiting.front());
        tooMany.push_back(std::move(waiting.front()));
        waiting.pop_front();
        ++dropped;
    }
    return tooMany;
}

void RecordQueue::Add(SharedSnapshot const& block) {
    std::vector<SharedSnapshot> tooMany;
    std::lock_guard<std::mutex> const lock(mutex);
    values += ValuesOf(*block);
    waiting.push_back(block);
    tooMany = TakeTooMany();
}

std::vector<SharedSnapshot> RecordQueue::Take(std::size_t mostTaken) {
    std::vector<SharedSnapshot> taken;
    std::lock_guard<std::mutex> const lock(mutex);
    for (std::size_t sum = 0; !waiting.empty() && sum < mostTaken;) {
        std::size_t const more = ValuesOf(*waiting.front());
        sum += more;
        values -= more;
        taken.push_back(std::move(waiting.front()));
        waiting.pop_front();
    }
    return taken;
}

void RecordQueue::PutBack(std::vector<SharedSnapshot> const& cycles) {
    std::vector<SharedSnapshot> tooMany;
    std::lock_guard<std::mutex> const lock(mutex);
    waiting.insert(waiting.begin(), cycles.begin(), cycles.end());
    for (SharedSnapshot const& cycle : cycles) {
        values += ValuesOf(*cycle);
    }
    tooMany = TakeTooMany();
}

bool RecordQueue::IsEmpty() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return waiting.empty();
}

unsigned long long RecordQueue::TakeDropped() {
    std::lock_guard<std::mutex> const lock(mutex);
    return std::exchange(dropped, 0);
}

}  // namespace workbench
