#pragma once

#include <cstddef>
#include <cstdlib>

namespace fuzz {

// Lua's allocator. Counts the octets in use, and can fail after a number of further allocations.
class CountingAllocator {
public:
    std::size_t Used() const { return used; }
    void FailAfter(int allocations) { left = allocations; }
    void FailNever() { left = -1; }

    // A lua_Alloc whose first argument is the allocator.
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
        auto& allocator = *static_cast<CountingAllocator*>(self);
        std::size_t const before = block ? oldSize : 0;
        if (newSize == 0) {
            std::free(block);
            allocator.used -= before;
            return nullptr;
        }
        // Lua requires that shrinking a block never fails.
        if (newSize > before && allocator.left == 0) {
            return nullptr;
        }
        if (newSize > before && allocator.left > 0) {
            --allocator.left;
        }
        void* const moved = std::realloc(block, newSize);
        if (moved) {
            allocator.used += newSize - before;
        }
        return moved;
    }

private:
    std::size_t used = 0;
    int left = -1;  // no limit
};

}  // namespace fuzz
