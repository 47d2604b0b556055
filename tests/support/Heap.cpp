#include "Heap.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<long long> octets{0};
std::atomic<long long> blocks{0};
std::atomic<long long> peak{0};  // of octets
std::atomic<long long> totalOctets{0};
std::atomic<long long> allocations{0};
std::atomic<long long> untilFailure{0};  // allocations up to the one that fails; 0: none fails

std::atomic<bool> failsOn{false};  // later allocations fail too

bool MustFail() {
    long long left = untilFailure.load(std::memory_order_relaxed);
    while (left != 0 && !untilFailure.compare_exchange_weak(left, left - 1, std::memory_order_relaxed)) {
    }
    return left == 1 || (left == 0 && failsOn.load(std::memory_order_relaxed));
}

void Raise(std::atomic<long long>& most, long long now) {
    long long before = most.load(std::memory_order_relaxed);
    while (now > before && !most.compare_exchange_weak(before, now, std::memory_order_relaxed)) {
    }
}

// The requested size is stored before every block, since the allocator's own size depends on the free memory
// that it finds.
constexpr std::size_t DefaultAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
static_assert(DefaultAlignment >= sizeof(std::size_t));

void* Count(void* raw, std::size_t size, std::size_t alignment) {
    if (!raw) {
        return nullptr;
    }
    auto const more = static_cast<long long>(size);
    Raise(peak, octets.fetch_add(more, std::memory_order_relaxed) + more);
    blocks.fetch_add(1, std::memory_order_relaxed);
    totalOctets.fetch_add(more, std::memory_order_relaxed);
    allocations.fetch_add(1, std::memory_order_relaxed);
    char* const block = static_cast<char*>(raw) + alignment;
    std::memcpy(block - sizeof size, &size, sizeof size);
    return block;
}

void* Allocate(std::size_t size) {
    return MustFail() ? nullptr : Count(std::malloc(DefaultAlignment + size), size, DefaultAlignment);
}

// Only alignments above the default use this form. aligned_alloc needs a multiple of the alignment as size.
void* Allocate(std::size_t size, std::align_val_t alignment) {
    auto const unit = static_cast<std::size_t>(alignment);
    return MustFail() ? nullptr
                      : Count(std::aligned_alloc(unit, unit + (size + unit - 1) / unit * unit), size, unit);
}

void* OrThrow(void* block) {
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}

void Free(void* block, std::size_t alignment = DefaultAlignment) {
    if (block) {
        std::size_t size = 0;
        std::memcpy(&size, static_cast<char*>(block) - sizeof size, sizeof size);
        octets.fetch_sub(static_cast<long long>(size), std::memory_order_relaxed);
        blocks.fetch_sub(1, std::memory_order_relaxed);
        std::free(static_cast<char*>(block) - alignment);
    }
}

}  // namespace

// All forms are replaced, since otherwise a block could be allocated here and freed by a sanitizer's form.
void* operator new(std::size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new[](std::size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void operator delete(void* block) noexcept {
    Free(block);
}
void operator delete[](void* block) noexcept {
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete(void* block, std::nothrow_t const&) noexcept {
    Free(block);
}
void operator delete[](void* block, std::nothrow_t const&) noexcept {
    Free(block);
}
void operator delete(void* block, std::align_val_t alignment) noexcept {
    Free(block, static_cast<std::size_t>(alignment));
}
void operator delete[](void* block, std::align_val_t alignment) noexcept {
    Free(block, static_cast<std::size_t>(alignment));
}
void operator delete(void* block, std::size_t, std::align_val_t alignment) noexcept {
    Free(block, static_cast<std::size_t>(alignment));
}
void operator delete[](void* block, std::size_t, std::align_val_t alignment) noexcept {
    Free(block, static_cast<std::size_t>(alignment));
}

namespace test {

long long HeapOctets() {
    return octets.load(std::memory_order_relaxed);
}

long long HeapPeak() {
    return peak.load(std::memory_order_relaxed);
}

void ForgetHeapPeak() {
    peak.store(HeapOctets(), std::memory_order_relaxed);
}

HeapTotals HeapTotalsSoFar() {
    return {allocations.load(std::memory_order_relaxed), totalOctets.load(std::memory_order_relaxed)};
}

void FailAllocation(long long number) {
    failsOn.store(false, std::memory_order_relaxed);
    untilFailure.store(number, std::memory_order_relaxed);
}

void FailAllocationsFrom(long long number) {
    untilFailure.store(number, std::memory_order_relaxed);
    failsOn.store(true, std::memory_order_relaxed);
}

bool HasFailedAllocation() {
    return untilFailure.load(std::memory_order_relaxed) == 0;
}

long long HeapBlocks() {
    return blocks.load(std::memory_order_relaxed);
}

}  // namespace test
