#pragma once

#include <cstddef>
#include <cstring>

// A copy of size octets (0 or more) on the heap, followed by a zero; the caller owns it.
inline char* CopyOctets(char const* data, int size) {
    auto const length = static_cast<std::size_t>(size);
    char* const copy = new char[length + 1];
    if (length != 0) {
        std::memcpy(copy, data, length);
    }
    copy[length] = 0;
    return copy;
}
