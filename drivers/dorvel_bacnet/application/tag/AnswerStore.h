#pragma once

#include <array>
#include <cstddef>
#include <vector>

// Memory for the parts of an answer: its PDU, its tags with their octets and lists, the values read from
// them. While a store lives, memory that its thread frees is kept and serves the next answer, instead of
// going back to the heap. The answer for an object with three properties has 14 tags and four values that
// live for one transaction, and the next answer needs as many again. TBACnet::Read has one store per poll:
//
//                               waiting in the store
//   first answer is parsed      -                       Take asks the heap, once per tag
//   its tree is destroyed       tag -> tag -> tag       Leave keeps each one
//   second answer is parsed     -                       Take returns them, the last one first
//   its tree is destroyed       tag -> tag -> tag
//   the poll ends               -                       the destructor frees them
//
// A waiting block holds the pointer to the next one, so that list needs no memory of its own. The octets of a
// tag wait as a vector with its capacity.
//
// Every block is an allocation of its own on the heap, whether or not a store lives. So a tag may be older
// than the store that receives its memory, and may outlive the store that its memory came from. Stores may
// nest: the youngest one of the thread serves, and they end in the reverse order of their beginning. Threads
// share nothing.
class AnswerStore {
public:
    AnswerStore();
    ~AnswerStore();
    AnswerStore(AnswerStore const&) = delete;
    AnswerStore& operator=(AnswerStore const&) = delete;

    // For PartOfAnswer and AnswerAllocator. Take throws std::bad_alloc as the heap does.
    static void* Take(std::size_t size);
    static void Leave(void* block, std::size_t size) noexcept;

    // An empty vector, with the capacity of an earlier one if one waits.
    static std::vector<char> TakeOctets();
    // Keeps the capacity of octets that are no longer needed.
    static void LeaveOctets(std::vector<char>&& octets) noexcept;

    // The size in octets of the blocks that are kept: enough for the largest part of an answer, the ack of a
    // ReadPropertyMultiple, and for a list of nine sub-tags. And the greatest number of blocks, and of
    // vectors: enough for 40 properties with a value each. The limits keep an answer of many thousand tags
    // from holding its memory until the end of the poll.
    static constexpr std::size_t BlockSize = 9 * sizeof(void*);
    static constexpr std::size_t MostBlocks = 256;
    // The greatest capacity of a vector that is kept.
    static constexpr std::size_t MostOctets = 64;

private:
    // A waiting block.
    struct Waiting {
        Waiting* next;
    };

    void* Pop();
    void Push(void* block);

    static thread_local AnswerStore* current;

    AnswerStore* const outer;
    Waiting* first = nullptr;
    std::size_t count = 0;
    std::array<std::vector<char>, MostBlocks> waitingOctets;
    std::size_t waitingCount = 0;
};

// The base of the classes whose objects are parts of an answer.
class PartOfAnswer {
public:
    static void* operator new(std::size_t size) { return AnswerStore::Take(size); }
    static void operator delete(void* block, std::size_t size) { AnswerStore::Leave(block, size); }
};

// For containers in parts of an answer.
template <class T>
struct AnswerAllocator {
    using value_type = T;

    AnswerAllocator() = default;
    template <class Other>
    AnswerAllocator(AnswerAllocator<Other> const&) {}

    T* allocate(std::size_t count) { return static_cast<T*>(AnswerStore::Take(SizeOf(count))); }
    void deallocate(T* elements, std::size_t count) { AnswerStore::Leave(elements, SizeOf(count)); }
    // NOLINTNEXTLINE(bugprone-sizeof-expression): the elements may be pointers
    static std::size_t SizeOf(std::size_t count) { return count * sizeof(T); }

    template <class Other>
    bool operator==(AnswerAllocator<Other> const&) const {
        return true;
    }
    template <class Other>
    bool operator!=(AnswerAllocator<Other> const&) const {
        return false;
    }
};
