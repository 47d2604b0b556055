#pragma once

#include <initializer_list>
#include <vector>

#include "IStreamBase.h"

// Helpers of the driver: octets as unsigned numbers, joined and compared.
using Octets = std::vector<char>;

// The octet as a number from 0 to 255.
inline unsigned OctetValue(char octet) {
    return static_cast<unsigned char>(octet);
}

// Reads one octet as an enumerator. Throws WrongLengthException at the end of the stream.
template <class Enum>
Enum ReadEnum(IStreamBase& stream) {
    return static_cast<Enum>(OctetValue(stream.ReadByte()));
}

inline void AppendOctets(Octets& octets, Octets const& more) {
    octets.insert(octets.end(), more.begin(), more.end());
}

// Appends the four octets of a number, most significant first.
inline void AppendNumber(Octets& octets, unsigned int number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        octets.push_back(static_cast<char>(number >> shift & 0xFF));
    }
}

// The first difference that is not 0, or 0. PDUs and services compare field by field with it.
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
