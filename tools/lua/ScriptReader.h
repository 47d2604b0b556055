#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ScriptValue.h"

struct lua_State;

namespace tools {

// What makes a value of a script unreadable. The line is that of the innermost call of a constructor around
// it, 0 if there is none.
class UnreadableValue : public std::runtime_error {
public:
    explicit UnreadableValue(std::string const& text, int lineOfCall = 0)
        : std::runtime_error(text), line(lineOfCall) {}

    int Line() const { return line; }

private:
    int line;
};

// Copies the value at an absolute index of the stack, with `depth` levels of tables. It reads raw: no
// metamethod is called, no Lua error is raised, nothing is allocated in the Lua state but room on its stack,
// and the stack is left as it was. The octets that the copy takes are subtracted from `room`: in Lua a text
// or a table takes memory once, however often it is passed. Throws UnreadableValue when the room or half a
// million values do not suffice, and for a table with a key that is neither a name nor an element's number.
// In the tables of the fields `numbered` any whole number is a key: the value has a field of that name.
ScriptValue ReadValue(lua_State* L, int index, int depth, std::size_t& room,
                      std::vector<std::string_view> const& numbered = {});

// A lua_CFunction for constructors, NAME{...}, with NAME as its upvalue 1. Returns the table in a userdata
// that ReadValue reads as a table with its kind and line. Arguments that are not one table are put into one.
int MakeValue(lua_State* L);

}  // namespace tools
