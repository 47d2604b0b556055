#pragma once

#include <string>
#include <string_view>

namespace workbench {

// Texts of people and devices in a Lua source.

// The text in quotation marks, as a Lua literal with exactly these octets. Characters that can be seen stay
// as they are, everything else is an escape.
std::string LuaString(std::string_view text);

// The text in one comment with a line end, after `indent` blanks; every line of it has its own "--".
std::string LuaComment(std::string_view text, std::size_t indent = 0);

// A number as Lua reads it back: "21.5", "0/0", "1e999", "-1e999". Whole numbers have no point.
std::string LuaNumber(float number);
std::string LuaNumber(double number);

}  // namespace workbench
