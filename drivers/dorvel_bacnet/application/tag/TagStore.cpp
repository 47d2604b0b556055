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
    if (size > PieceSize) {
        return ::operator new(size);
    }
    return current && current->first ? current->Pop() : ::operator new(PieceSize);
}

void TagStore::Leave(void* piece, std::size_t size) noexcept {
    if (current && size <= PieceSize && current->count < MostPieces) {
        current->Push(piece);
    } else {
        ::operator delete(piece);
    }
}

void* TagStore::Pop() {
    Waiting* const piece = first;
    ASAN_UNPOISON_MEMORY_REGION(piece, PieceSize);
    first = piece->next;
    --count;
    return piece;
}

void TagStore::Push(void* piece) {
    first = new (piece) Waiting{first};
    ASAN_POISON_MEMORY_REGION(piece, PieceSize);
    ++count;
}
