#include "PlantBoard.h"

#include <utility>

namespace workbench {

PlantBoard::PlantBoard(std::vector<SharedSnapshot> first) : blocks(std::move(first)) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        indices[blocks[i]->config] = i;
    }
}

void PlantBoard::Put(SharedSnapshot snapshot) {
    auto const found = indices.find(snapshot->config);
    if (found == indices.end()) {
        return;
    }
    {
        std::lock_guard<std::mutex> const lock(mutex);
        // What was there is freed after the lock, if nobody else has it.
        blocks[found->second].swap(snapshot);
        ++generation;
    }
    changed.notify_all();
}

SharedSnapshot PlantBoard::Latest(BlockConfig const& block) const {
    auto const found = indices.find(&block);
    std::lock_guard<std::mutex> const lock(mutex);
    return found == indices.end() ? nullptr : blocks[found->second];
}

std::vector<SharedSnapshot> PlantBoard::All() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return blocks;
}

unsigned long long PlantBoard::Generation() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return generation;
}

unsigned long long PlantBoard::Wait(unsigned long long seen, std::chrono::milliseconds timeout) const {
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait_for(lock, timeout, [&] { return isClosed || generation != seen; });
    return generation;
}

void PlantBoard::Close() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        isClosed = true;
    }
    changed.notify_all();
}

bool PlantBoard::IsClosed() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return isClosed;
}

}  // namespace workbench
