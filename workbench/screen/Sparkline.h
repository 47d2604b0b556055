#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "History.h"

namespace workbench {

// A trend as one line of blocks of eight heights, from the least to the greatest value, each for the value at
// the end of its part of the time. A part without a value is blank. Empty without any number.
std::string Sparkline(std::vector<Sample> const& samples, long long from, long long to, std::size_t width);

}  // namespace workbench
