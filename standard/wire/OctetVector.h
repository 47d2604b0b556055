#pragma once

#include <vector>

namespace standard {

// A sequence of octets as they are on the wire.
using Octets = std::vector<char>;

// 0 to 255, whatever the sign of a plain char is: octets are read through it wherever they are compared or
// widened.
inline unsigned OctetValue(char octet) {
    return static_cast<unsigned char>(octet);
}

}  // namespace standard
