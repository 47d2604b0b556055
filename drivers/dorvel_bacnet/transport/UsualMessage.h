#pragma once

#include <cstddef>

// Room for a whole request in most cases. A header that reserves it is not moved by what is appended to it.
constexpr std::size_t UsualMessage = 64;
