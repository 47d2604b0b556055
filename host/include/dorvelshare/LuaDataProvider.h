#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostApi.h"
#include "opcua/OpcUa_Variant.h"

class STTask;
class VariableStore;

// One value on its way to the runtime: the target variable, its field (empty for the whole), the value.
struct WriteDataRec {
    long long Id = 0;
    std::string Field;
    unsigned int Index = 0;  // place in an array, 0 for scalars
    unsigned int Reserved = 0;
    OpcUa_VariantHlp Value;
};

// What a driver keeps of one configured variable: where its values go and where values to be written come
// from.
struct DriverVarDsc {
    unsigned char IsWrite = 0;  // write flag, the first octet: non-zero with a write channel
    long long ReadId = 0;
    std::string ReadField;
    OpcUa_BuiltInTypeHlp ReadType;
    long long WriteId = 0;
    std::string WriteField;
    OpcUa_BuiltInTypeHlp WriteType;
    OpcUa_VariantHlp LastWritten;  // the value that the write condition last let through
    OpcUa_VariantHlp LastTrigger;  // the trigger item as the write condition last saw it
};

struct GetValueFlags {
    enum GetValueFlagsEnum : int { None = 0 };
};

// A task's access to the runtime's variables. Every operation may be called by any thread.
class DORVEL_HOST_API LuaDataProvider {
public:
    LuaDataProvider(std::shared_ptr<VariableStore> store, STTask* owner);

    // Stores the records in order. A DataValue brings its quality and time with it; any other value is good
    // and of now; a null variant leaves null with OpcUa_BadNoData. Records of unknown variables are dropped.
    void WriteValues(std::vector<WriteDataRec> const& values) const;

    // The variable's present value converted to type: for DataValue with value, quality and time, else the
    // bare value. OpcUa_BadNoData and null when there is no such variable or nothing was stored yet,
    // otherwise the result of the conversion. A type of Null leaves the value as it is; the integer and the
    // flags are kept for the host.
    OpcUa_StatusCode ReadValue(long long id, int index, std::string const& field,
                               OpcUa_BuiltInTypeHlp const& type, OpcUa_VariantHlp& value,
                               GetValueFlags::GetValueFlagsEnum flags) const;

    VariableStore& Store() const { return *store; }
    STTask* Owner() const { return owner; }

private:
    std::shared_ptr<VariableStore> store;
    STTask* owner;
};
