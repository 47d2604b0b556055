#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "NameTable.h"
#include "dorvel/ScadaProtocol.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace workbench {

// Where a script stands, for messages: line 0 when it is not known.
struct Place {
    std::string File;
    int Line = 0;
};

struct TaskConfig {
    std::string Name;
    int Period = 1000;  // milliseconds
};

struct VariableConfig {
    std::string Name;
    OpcUa_BuiltInTypeHlp Type;
    NameRow const* ObjectType = nullptr;
    NameRow const* Property = nullptr;
    int ObjectNumber = 0;
    long long ReadId = 0;   // the variable in the runtime's store
    long long WriteId = 0;  // the one whose value goes to the device; 0 without Write
    bool Write = false;
};

// One block of a project, checked.
struct BlockConfig {
    using FieldValue = std::variant<long long, bool, std::string>;

    std::string Name;
    std::string Task;  // empty: the project's first task
    std::string Address;
    std::vector<std::pair<std::string, FieldValue>> Fields;  // what the driver is given, Vars aside
    std::vector<VariableConfig> Variables;
    ProtocolWriteCondition WriteCondition = ProtocolWriteCondition::OnChange;
    long long WriteItemId = 0;  // the trigger, with OnTrigger and a variable to write
    Place Where;
    ScadaProtocol* Protocol = nullptr;  // the driver's object, owned by the Lua state
};

// "file:line: ", "file: " without a line, "" without a file.
std::string Prefix(Place const& place);

}  // namespace workbench
