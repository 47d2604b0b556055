#pragma once

#include <string>
#include <vector>

#include "Endpoint.h"

namespace simulator {

// Writes one line to standard error for a datagram and one for each answer to it, in hexadecimal.
void logExchange(std::string const& deviceName, Datagram const& datagram,
                 std::vector<Datagram> const& answers);

}  // namespace simulator
