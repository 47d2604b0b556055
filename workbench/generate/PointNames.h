#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceRecord.h"

namespace workbench {

// Names for blocks and variables from those of devices and objects: one line of valid UTF-8, without "=",
// which ends the name in an assignment, and cut where they are very long.

// The name of a device or an object as a person reads it; empty if nothing of it is left.
std::string ReadableName(std::string_view raw);

// Names of which no two differ only in letter case or blanks.
class UniqueNames {
public:
    // `wanted`, with `distinction` in parentheses if it is taken, and with a number after that if both are.
    std::string Take(std::string const& wanted, std::string const& distinction);

private:
    bool Add(std::string const& name);

    std::set<std::string> keys;
};

// A name for each object, in their order. Among equal ones the object with the lowest identifier keeps the
// name: objects that are added to a device later do not rename the others, as long as their numbers are
// higher.
std::vector<std::string> VariableNames(std::vector<ObjectRecord> const& objects);

// A name for each device, in their order. They have no dots: "Block.Variable" has one meaning.
std::vector<std::string> BlockNames(Inventory const& inventory);

// A name for each device that Lua takes for a variable and a file system for a file: small letters, digits
// and "_".
std::vector<std::string> ParameterNames(Inventory const& inventory);

}  // namespace workbench
