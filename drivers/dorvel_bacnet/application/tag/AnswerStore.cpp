#include "AnswerStore.h"

#include <new>
#include <utility>

#include "TagBase.h"

// Marks a waiting block for AddressSanitizer, which then reports a use of a tag after its end.
#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>  // its macros are empty without AddressSanitizer
#else
#define ASAN_POISON_MEMORY_REGION(address, size) static_cast<void>(0)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(0)
#endif

thread_local AnswerStore* AnswerStore::current = nullptr;

namespace {

template <class Vector>
Vector TakeLast(std::vector<Vector>& waiting) {
    if (waiting.empty()) {
        return {};
    }
    Vector last = std::move(waiting.back());
    waiting.pop_back();
    return last;
}

template <class Vector>
void Keep(std::vector<Vector>& waiting, Vector&& vector) noexcept {
    std::size_t const octets = vector.capacity() * sizeof(typename Vector::value_type);
    if (octets != 0 && octets <= AnswerStore::LongestVector && waiting.size() < waiting.capacity()) {
        vector.clear();
        waiting.push_back(std::move(vector));
    }
}

}  // namespace

AnswerStore::AnswerStore() : outer(current) {
    current = this;
    try {
        waitingOctets.reserve(MostBlocks);
        waitingSubTags.reserve(MostBlocks);
    } catch (std::bad_alloc const&) {
    }
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
    return current ? TakeLast(current->waitingOctets) : std::vector<char>();
}

AnswerStore::SubTags AnswerStore::TakeSubTags() {
    return current ? TakeLast(current->waitingSubTags) : SubTags();
}

void AnswerStore::Leave(std::vector<char>&& octets) noexcept {
    if (current) {
        Keep(current->waitingOctets, std::move(octets));
    }
}

void AnswerStore::Leave(SubTags&& subTags) noexcept {
    if (current) {
        Keep(current->waitingSubTags, std::move(subTags));
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
