#pragma once

#include <initializer_list>
#include <vector>

#include "IStreamBase.h"

// Small tools of the PDUs and services: octets as the unsigned numbers that they are, and comparison.

// 0 to 255, whatever the sign of a plain char is.
inline int OctetValue(char octet) {
    return static_cast<unsigned char>(octet);
}

// Takes one octet from the stream as an enumerator. Throws WrongLengthException when none is left.
template <class Enum>
Enum ReadEnum(IStreamBase& stream) {
    return static_cast<Enum>(OctetValue(stream.ReadByte()));
}

inline void AppendOctets(std::vector<char>& octets, std::vector<char> const& more) {
    octets.insert(octets.end(), more.begin(), more.end());
}

// The first of the differences that is not 0, or 0: how PDUs and services compare field by field.
inline int FirstDifference(std::initializer_list<int> differences) {
    for (int const difference : differences) {
        if (difference != 0) {
            return difference;
        }
    }
    return 0;
}

// The difference of two enumerators by their numbers.
template <class Enum>
int EnumDifference(Enum left, Enum right) {
    return static_cast<int>(left) - static_cast<int>(right);
}
