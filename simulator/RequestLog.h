#pragma once

#include <string>
#include <vector>

#include "FaultyStation.h"

namespace simulator {

// Writes one line of a device to standard error.
void LogLine(std::string const& deviceName, std::string const& line);

// Writes one line to standard error for a datagram and one for each answer to it, in hexadecimal. The line of
// an answer also states its delay and whether it leaves from another address.
void LogExchange(std::string const& deviceName, Datagram const& datagram,
                 std::vector<Delivery> const& answers);

}  // namespace simulator
