#pragma once

#include <stdexcept>
#include <string_view>

#include "ObjectId.h"

namespace workbench {

// An object as people type it: "analog-input 1", "analog-input,1", "analog-input:1", in any case and also
// with underscores, and numbers of types, "0,1", as those of vendors have no names.

// What is wrong with a text, in quotes, what is allowed and which name is near.
class ObjectMistake : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

// Throws ObjectMistake.
standard::ObjectId ParseObject(std::string_view text);

}  // namespace workbench
