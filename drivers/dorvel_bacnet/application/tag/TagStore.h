#pragma once

#include <cstddef>

// The memory of tags. An answer is some twenty small objects that live for one transaction, and the next
// answer is the same again: while a store lives, what its thread's tags leave is taken by the tags after
// them, and not asked of the heap each time. It gives all back at its end, so nothing is kept between polls.
//
// Every piece is one of the heap's own, whether or not a store lives: a tag may be older than the store that
// gets its memory, and may outlive the one that its memory came from. Of several stores on a thread the
// youngest serves; they end in the reverse order of their beginning. Nothing is shared between threads.
class TagStore {
public:
    TagStore();
    ~TagStore();
    TagStore(TagStore const&) = delete;
    TagStore& operator=(TagStore const&) = delete;

    // What a tag's operator new and delete do. Throws std::bad_alloc like the heap.
    static void* Take(std::size_t size);
    static void Leave(void* piece, std::size_t size) noexcept;

    // The largest tag that is kept, and how many are: enough for 80 properties with a value each, and an
    // answer of many thousand tags does not stay until the end of the poll.
    static constexpr std::size_t PieceSize = 6 * sizeof(void*);
    static constexpr int MostPieces = 256;

private:
    // A piece that waits: its memory holds the way to the next one.
    struct Waiting {
        Waiting* next;
    };

    void* Pop();
    void Push(void* piece);

    static thread_local TagStore* current;

    TagStore* const outer;
    Waiting* first = nullptr;
    int count = 0;
};
