#include "AnswerStore.h"

#include <new>
#include <utility>

// Marks a waiting block for AddressSanitizer, which then reports a use of a tag after its end.
#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>  // its macros are empty without AddressSanitizer
#else
#define ASAN_POISON_MEMORY_REGION(address, size) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(0)
#endif

thread_local AnswerStore* AnswerStore::current = nullptr;

AnswerStore::AnswerStore() : outer(current) {
    current = this;
}

AnswerStore::~AnswerStore() {
    while (first) {
        ::operator delete(Pop());
    }
    current = outer;
}

void* AnswerStore::Take(std::size_t size) {
    if (size > BlockSize) {
        return ::operator new(size);
    }
    return current && current->first ? current->Pop() : ::operator new(BlockSize);
}

void AnswerStore::Leave(void* block, std::size_t size) noexcept {
    if (current && size <= BlockSize && current->count < MostBlocks) {
        current->Push(block);
    } else {
        ::operator delete(block);
    }
}

std::vector<char> AnswerStore::TakeOctets() {
    if (!current || current->waitingCount == 0) {
        return {};
    }
    return std::move(current->waitingOctets[--current->waitingCount]);
}

void AnswerStore::LeaveOctets(std::vector<char>&& octets) noexcept {
    bool const isKept = octets.capacity() != 0 && octets.capacity() <= MostOctets;
    if (current && isKept && current->waitingCount < MostBlocks) {
        octets.clear();
        current->waitingOctets[current->waitingCount++] = std::move(octets);
    }
}

void* AnswerStore::Pop() {
    Waiting* const block = first;
    ASAN_UNPOISON_MEMORY_REGION(block, BlockSize);
    first = block->next;
    --count;
    return block;
}

void AnswerStore::Push(void* block) {
    first = new (block) Waiting{first};
    ASAN_POISON_MEMORY_REGION(block, BlockSize);
    ++count;
}
