#pragma once

#include <vector>

namespace standard {

// A sequence of octets as on the wire. Each is unsigned, 0 to 255, wherever it is compared or
// widened; OctetReader and OctetWriter see to that.
using Octets = std::vector<char>;

}  // namespace standard
