#pragma once

#include <cstddef>

// The size in octets that holds a whole request in most cases. A header that reserves it does not move when
// the rest is appended.
constexpr std::size_t UsualMessage = 64;
