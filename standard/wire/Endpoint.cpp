#include "Endpoint.h"

namespace standard {

std::string Endpoint::Text() const {
    std::string result;
    for (int shift = 24; shift >= 0; shift -= 8) {
        result += std::to_string(address >> shift & 0xFF);
        result += shift > 0 ? '.' : ':';
    }
    return result + std::to_string(port);
}

}  // namespace standard
