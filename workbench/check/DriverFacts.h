#pragma once

#include <string>
#include <vector>

#include "DriverTables.h"
#include "Project.h"

namespace workbench {

// What the driver does with a variable, as its own tables and functions have it.

// The object and property that the driver takes the variable's codes for.
struct DriverAddress {
    ObjectTypeEnum objectType;
    PropertyIdentifierEnum property;
};
DriverAddress AddressOf(VariableConfig const& variable);

// The property that the request of a poll has for the variable.
PropertyIdentifierEnum SentAs(VariableConfig const& variable);

// What becomes of a write through the variable.
DriverWrite WriteOf(VariableConfig const& variable);

// The octets of an address text of a block that the project's checks take.
std::vector<char> AddressOctets(std::string const& text);
std::vector<char> DefaultMacOctets();

// Milliseconds that the driver waits for an answer.
int AnswerTime();

// Attempts per object of a block without CountRepeat.
constexpr int DefaultCountRepeat = 3;

}  // namespace workbench
