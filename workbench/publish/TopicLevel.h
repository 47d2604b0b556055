#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

// Names of blocks and variables as levels of MQTT topics. A level is one to LongestLevel octets of valid
// UTF-8 that brokers accept and that no filter takes for anything else.
constexpr std::size_t LongestLevel = 200;
constexpr std::size_t LongestPrefix = 512;

// The name as a level. Written as %XX, with upper-case digits, are the octets of: / + # % ~, a $ at the
// beginning, control characters (C0, DEL and C1), code points that are not characters (U+FFFE, U+FDD0 and the
// like), and all that is not UTF-8. The empty name is "%". A level that would be longer than LongestLevel is
// its first 150 octets, or as many of its whole characters and escapes as these hold, "~" and the name's
// NameHash. Names that are not cut have different levels; of those that are cut two could have the same one.
std::string EscapedLevel(std::string_view name);

// The FNV-1a hash (64 bits) of the octets of a name as 16 upper-case hexadecimal digits.
std::string NameHash(std::string_view name);

// What is wrong with a prefix of topics, beginning with the prefix in quotes; empty if it can be used as it
// is. A prefix has one or more levels with "/" between; it is not empty, does not begin with $, does not end
// with /, is valid UTF-8 without + # and control characters, and has at most LongestPrefix octets.
std::string PrefixMistake(std::string const& prefix);

}  // namespace workbench
