#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "HostApi.h"
#include "opcua/OpcUa_Variant.h"

// The state of a variable: the bare value (never a DataValue), quality and time of the last change.
struct VariableState {
    OpcUa_VariantHlp Value;
    OpcUa_StatusCode Status = OpcUa_BadNoData;
    long long Time = 0;  // file time, 0 before the first value
};

// The runtime's variables, shared by all tasks; thread-safe. A variable is addressed by an id and a field
// name (empty for the whole variable). Ids are positive and come from Declare.
class DORVEL_HOST_API VariableStore {
public:
    // Creates a variable, null and without data. The name is for people and need not be unique.
    long long Declare(std::string name, OpcUa_BuiltInTypeHlp type);

    // Both return false for an unknown id. Write splits a DataValue into value, quality and time, or the
    // given time where it has none. Any other value is stored as good at time, null as OpcUa_BadNoData.
    bool Write(long long id, std::string const& field, OpcUa_Variant const& value, long long time);
    bool Read(long long id, std::string const& field, VariableState& state) const;

    std::string Name(long long id) const;
    OpcUa_BuiltInTypeHlp Type(long long id) const;

private:
    struct Variable {
        std::string Name;
        OpcUa_BuiltInTypeHlp Type;
        VariableState Whole;
        std::map<std::string, VariableState> Fields;

        // Null for a field that was never written.
        VariableState const* Find(std::string const& field) const;
    };

    // Ids run from 1 without a gap. Call IsDeclared under the mutex, and IndexOf for a declared id only.
    bool IsDeclared(long long id) const {
        return id > 0 && static_cast<unsigned long long>(id) <= variables.size();
    }
    static std::size_t IndexOf(long long id) { return static_cast<std::size_t>(id - 1); }

    mutable std::mutex mutex;
    std::deque<Variable> variables;
};
