#pragma once

#include <cstddef>
#include <cstdlib>

namespace fuzz {

// Lua's memory: counts what is in use, and can be told to give out so many pieces more and then none.
class CountingAllocator {
public:
    std::size_t Used() const { return used; }
    void FailAfter(int pieces) { left = pieces; }
    void FailNever() { left = -1; }

    // As lua_Alloc, the object being the first argument.
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
        auto& allocator = *static_cast<CountingAllocator*>(self);
        std::size_t const before = block ? oldSize : 0;
        if (newSize == 0) {
            std::free(block);
            allocator.used -= before;
            return nullptr;
        }
        // Lua counts on it that a piece can become smaller.
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
