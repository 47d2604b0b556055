#pragma once

#include <initializer_list>
#include <vector>

#include "IStreamBase.h"

// Octets as they are on the wire, read as the unsigned numbers that they are, put together and compared.
using Octets = std::vector<char>;

// 0 to 255, whatever the sign of a plain char is.
inline unsigned OctetValue(char octet) {
    return static_cast<unsigned char>(octet);
}

// Takes one octet from the stream as an enumerator. Throws WrongLengthException when none is left.
template <class Enum>
Enum ReadEnum(IStreamBase& stream) {
    return static_cast<Enum>(OctetValue(stream.ReadByte()));
}

inline void AppendOctets(Octets& octets, Octets const& more) {
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

// The difference of two octets, each 0 to 255.
inline int OctetDifference(char left, char right) {
    return static_cast<int>(OctetValue(left)) - static_cast<int>(OctetValue(right));
}

// The difference of two enumerators by their numbers.
template <class Enum>
int EnumDifference(Enum left, Enum right) {
    return static_cast<int>(left) - static_cast<int>(right);
}
