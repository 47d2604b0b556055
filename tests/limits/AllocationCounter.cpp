#include "AllocationCounter.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> calls{0};
std::atomic<std::size_t> octets{0};
std::atomic<std::size_t> live{0};
std::atomic<std::size_t> peak{0};

void* Take(std::size_t size) {
    void* const room = std::malloc(std::max<std::size_t>(size, 1));
    if (room) {
        ++calls;
        octets += size;
        std::size_t const now = live += ::malloc_usable_size(room);
        std::size_t highest = peak;
        while (now > highest && !peak.compare_exchange_weak(highest, now)) {
        }
    }
    return room;
}

void GiveBack(void* room) {
    if (room) {
        live -= ::malloc_usable_size(room);
    }
    std::free(room);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const room = Take(size);
    if (!room) {
        throw std::bad_alloc();
    }
    return room;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Take(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return Take(size);
}
void operator delete(void* room) noexcept {
    GiveBack(room);
}
void operator delete[](void* room) noexcept {
    GiveBack(room);
}
void operator delete(void* room, std::size_t) noexcept {
    GiveBack(room);
}
void operator delete[](void* room, std::size_t) noexcept {
    GiveBack(room);
}
void operator delete(void* room, std::nothrow_t const&) noexcept {
    GiveBack(room);
}
void operator delete[](void* room, std::nothrow_t const&) noexcept {
    GiveBack(room);
}

namespace test {

Allocations AllocationsSoFar() {
    return {calls, octets};
}
std::size_t LiveOctets() {
    return live;
}

AllocationWatch::AllocationWatch() : before(AllocationsSoFar()), liveBefore(live) {
    peak = liveBefore;
}

Allocations AllocationWatch::Made() const {
    Allocations const now = AllocationsSoFar();
    return {now.calls - before.calls, now.octets - before.octets};
}
long long AllocationWatch::Growth() const {
    return static_cast<long long>(live) - static_cast<long long>(liveBefore);
}
long long AllocationWatch::Peak() const {
    return static_cast<long long>(peak) - static_cast<long long>(liveBefore);
}

double Ratio(Allocations const& larger, Allocations const& smaller) {
    auto const ratio = [](std::size_t more, std::size_t less) {
        return static_cast<double>(more) / static_cast<double>(std::max<std::size_t>(less, 1));
    };
    return std::max(ratio(larger.calls, smaller.calls), ratio(larger.octets, smaller.octets));
}

}  // namespace test
