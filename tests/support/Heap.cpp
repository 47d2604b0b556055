#include "Heap.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<long long> octets{0};
std::atomic<long long> pieces{0};
std::atomic<long long> peak{0};  // of octets
std::atomic<long long> totalOctets{0};
std::atomic<long long> totalPieces{0};
std::atomic<long long> untilFailure{0};  // pieces up to the one that is refused; 0, none is

std::atomic<bool> failsOn{false};  // those after it too

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

// In front of every piece stands how large it was asked to be: what the allocator makes of that depends on
// what it finds free.
constexpr std::size_t DefaultAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
static_assert(DefaultAlignment >= sizeof(std::size_t));

void* Count(void* block, std::size_t size, std::size_t alignment) {
    if (!block) {
        return nullptr;
    }
    auto const more = static_cast<long long>(size);
    Raise(peak, octets.fetch_add(more, std::memory_order_relaxed) + more);
    pieces.fetch_add(1, std::memory_order_relaxed);
    totalOctets.fetch_add(more, std::memory_order_relaxed);
    totalPieces.fetch_add(1, std::memory_order_relaxed);
    char* const piece = static_cast<char*>(block) + alignment;
    std::memcpy(piece - sizeof size, &size, sizeof size);
    return piece;
}

void* Allocate(std::size_t size) {
    return MustFail() ? nullptr : Count(std::malloc(DefaultAlignment + size), size, DefaultAlignment);
}

// Alignments beyond the default alone are asked for in this form. The size of aligned_alloc is a multiple.
void* Allocate(std::size_t size, std::align_val_t alignment) {
    auto const unit = static_cast<std::size_t>(alignment);
    return MustFail() ? nullptr
                      : Count(std::aligned_alloc(unit, unit + (size + unit - 1) / unit * unit), size, unit);
}

void* OrThrow(void* piece) {
    if (!piece) {
        throw std::bad_alloc();
    }
    return piece;
}

void Free(void* piece, std::size_t alignment = DefaultAlignment) {
    if (piece) {
        std::size_t size = 0;
        std::memcpy(&size, static_cast<char*>(piece) - sizeof size, sizeof size);
        octets.fetch_sub(static_cast<long long>(size), std::memory_order_relaxed);
        pieces.fetch_sub(1, std::memory_order_relaxed);
        std::free(static_cast<char*>(piece) - alignment);
    }
}

}  // namespace

// All forms: those that are left out would be a sanitizer's own, and pieces would pass between the two.
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
void operator delete(void* piece) noexcept {
    Free(piece);
}
void operator delete[](void* piece) noexcept {
    Free(piece);
}
void operator delete(void* piece, std::size_t) noexcept {
    Free(piece);
}
void operator delete[](void* piece, std::size_t) noexcept {
    Free(piece);
}
void operator delete(void* piece, std::nothrow_t const&) noexcept {
    Free(piece);
}
void operator delete[](void* piece, std::nothrow_t const&) noexcept {
    Free(piece);
}
void operator delete(void* piece, std::align_val_t alignment) noexcept {
    Free(piece, static_cast<std::size_t>(alignment));
}
void operator delete[](void* piece, std::align_val_t alignment) noexcept {
    Free(piece, static_cast<std::size_t>(alignment));
}
void operator delete(void* piece, std::size_t, std::align_val_t alignment) noexcept {
    Free(piece, static_cast<std::size_t>(alignment));
}
void operator delete[](void* piece, std::size_t, std::align_val_t alignment) noexcept {
    Free(piece, static_cast<std::size_t>(alignment));
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
    return {totalPieces.load(std::memory_order_relaxed), totalOctets.load(std::memory_order_relaxed)};
}

void FailPiece(long long number) {
    failsOn.store(false, std::memory_order_relaxed);
    untilFailure.store(number, std::memory_order_relaxed);
}

void FailPiecesFrom(long long number) {
    untilFailure.store(number, std::memory_order_relaxed);
    failsOn.store(true, std::memory_order_relaxed);
}

bool HasFailedPiece() {
    return untilFailure.load(std::memory_order_relaxed) == 0;
}

long long HeapPieces() {
    return pieces.load(std::memory_order_relaxed);
}

}  // namespace test
