#include "TagStore.h"

#include <new>

// Marks a waiting block for AddressSanitizer, which then reports a use of a tag after its end.
#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>  // its macros are empty without AddressSanitizer
#else
#define ASAN_POISON_MEMORY_REGION(address, size) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(0)
#endif

thread_local TagStore* TagStore::current = nullptr;

TagStore::TagStore() : outer(current) {
    current = this;
}

TagStore::~TagStore() {
    while (first) {
        ::operator delete(Pop());
    }
    current = outer;
}

void* TagStore::Take(std::size_t size) {
    if (size > BlockSize) {
        return ::operator new(size);
    }
    return current && current->first ? current->Pop() : ::operator new(BlockSize);
}

void TagStore::Leave(void* block, std::size_t size) noexcept {
    if (current && size <= BlockSize && current->count < MostBlocks) {
        current->Push(block);
    } else {
        ::operator delete(block);
    }
}

void* TagStore::Pop() {
    Waiting* const block = first;
    ASAN_UNPOISON_MEMORY_REGION(block, BlockSize);
    first = block->next;
    --count;
    return block;
}

void TagStore::Push(void* block) {
    first = new (block) Waiting{first};
    ASAN_POISON_MEMORY_REGION(block, BlockSize);
    ++count;
}
