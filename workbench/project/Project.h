#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "NameTable.h"
#include "Place.h"
#include "PointFields.h"
#include "SourceTable.h"
#include "dorvel/ScadaProtocol.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace workbench {

struct TaskConfig {
    std::string name;
    int period = 1000;  // milliseconds
    Place where = {};
    bool isPeriodKnown = true;  // false: it is given and has a mistake
};

struct VariableConfig {
    std::string name;
    OpcUa_BuiltInTypeHlp type;
    NameRow const* objectType = nullptr;
    NameRow const* property = nullptr;
    int objectNumber = 0;
    long long readId = 0;   // the variable in the runtime's store
    long long writeId = 0;  // the variable that is written to the device; 0 without Write
    bool write = false;
    SourcePlace where = {};
    // For people, and never passed to the driver.
    std::string unit = {};  // a name of the standard, or the text of a unit that it does not have
    std::vector<std::string> stateTexts = {};
    std::string description = {};
    PointFields point = {};
};

// One block of a project, checked.
struct BlockConfig {
    using FieldValue = std::variant<long long, bool, std::string>;

    std::string name;
    std::string task;  // empty: the project's first task
    std::string address;
    std::vector<std::pair<std::string, FieldValue>> fields;  // as passed to the driver, without Vars
    std::vector<VariableConfig> variables;
    ProtocolWriteCondition writeCondition = ProtocolWriteCondition::OnChange;
    std::optional<std::uint32_t> deviceInstance;  // for people, as below
    long long writeItemId = 0;                    // the trigger, for OnTrigger and a writable variable
    SourcePlace where = {};
    std::set<std::string, std::less<>> refused;  // fields with a mistake: nobody knows what is meant
    ScadaProtocol* protocol = nullptr;           // the driver's object, owned by the Lua state
};

bool IsRefused(BlockConfig const& block, std::string_view field);

// "analog-input 1".
std::string ObjectText(VariableConfig const& variable);

}  // namespace workbench
