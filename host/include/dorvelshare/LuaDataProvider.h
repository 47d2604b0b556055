#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostApi.h"
#include "opcua/OpcUa_Variant.h"

class STTask;
class VariableStore;

// A value to be stored: the target variable, its field (empty for the whole variable), the value.
struct WriteDataRec {
    long long Id = 0;
    std::string Field;
    unsigned int Index = 0;  // index in an array, 0 for scalars
    unsigned int Reserved = 0;
    OpcUa_VariantHlp Value;
};

// The name of a field, in the size of a pointer: most are empty, for the whole variable.
class FieldName {
public:
    FieldName& operator=(std::string const& name) {
        text = name.empty() ? nullptr : std::make_unique<std::string const>(name);
        return *this;
    }
    operator std::string const&() const {
        static std::string const empty;
        return text ? *text : empty;
    }
    friend bool operator==(FieldName const& left, std::string const& right) {
        return static_cast<std::string const&>(left) == right;
    }

private:
    std::unique_ptr<std::string const> text;
};

// A driver's record of one configured variable: the target of its values, and the source of values to be
// written. A block has one for every variable, so the members are in an order without gaps.
struct DriverVarDsc {
    unsigned char IsWrite = 0;  // write flag, the first octet: non-zero with a write channel
    bool LastTrigger = true;    // the trigger item at the last check of the write condition
    OpcUa_BuiltInTypeHlp ReadType;
    OpcUa_BuiltInTypeHlp WriteType;
    long long ReadId = 0;
    long long WriteId = 0;
    FieldName ReadField;
    FieldName WriteField;
    OpcUa_VariantHlp LastWritten;  // the value that the write condition compares with
};

struct GetValueFlags {
    enum GetValueFlagsEnum : int { None = 0 };
};

// A task's access to the runtime's variables. Every operation may be called by any thread.
class DORVEL_HOST_API LuaDataProvider {
public:
    LuaDataProvider(std::shared_ptr<VariableStore> store, STTask* owner);

    // Stores the records in order. A DataValue carries its quality and time; any other value is stored as
    // good with the current time, a null variant as null with OpcUa_BadNoData. Records of unknown variables
    // are dropped.
    void WriteValues(std::vector<WriteDataRec> const& values) const;

    // Reads the variable's value, converted to type: for DataValue with quality and time, otherwise the bare
    // value. Returns OpcUa_BadNoData and null for an unknown variable and before the first value, otherwise
    // the result of the conversion. The type Null means no conversion. index and flags are ignored.
    OpcUa_StatusCode ReadValue(long long id, int index, std::string const& field,
                               OpcUa_BuiltInTypeHlp const& type, OpcUa_VariantHlp& value,
                               GetValueFlags::GetValueFlagsEnum flags) const;

    VariableStore& Store() const { return *store; }
    STTask* Owner() const { return owner; }

private:
    std::shared_ptr<VariableStore> store;
    STTask* owner;
};
