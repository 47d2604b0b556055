#pragma once

#include <cstring>

#include "opcua/OpcUa_Variant.h"

// A copy on the heap, zero behind it; the caller owns it. Without data or with a length below 0 it is empty.
inline OpcUa_Octets MakeOctets(char const* data, int length) {
    std::size_t const size = data && length > 0 ? static_cast<std::size_t>(length) : 0;
    OpcUa_Octets const octets{new char[size + 1], static_cast<int>(size)};
    if (size != 0) {
        std::memcpy(octets.Data, data, size);
    }
    octets.Data[size] = 0;
    return octets;
}
