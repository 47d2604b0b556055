#include "dorvelshare/LuaDataProvider.h"

#include <utility>

#include "dorvelshare/RTime.h"
#include "dorvelshare/VariableStore.h"

LuaDataProvider::LuaDataProvider(std::shared_ptr<VariableStore> variables, STTask* task)
    : store(std::move(variables)), owner(task) {}

void LuaDataProvider::WriteValues(std::vector<WriteDataRec> const& values) const {
    if (values.empty()) {
        return;
    }
    long long const now = getRDateTime();
    for (WriteDataRec const& record : values) {
        store->Write(record.Id, record.Field, record.Value, now);
    }
}

OpcUa_StatusCode LuaDataProvider::ReadValue(long long id, int /*index*/, std::string const& field,
                                            OpcUa_BuiltInTypeHlp const& type, OpcUa_VariantHlp& value,
                                            GetValueFlags::GetValueFlagsEnum /*flags*/) const {
    value = OpcUa_VariantHlp();
    VariableState state;
    store->Read(id, field, state);
    bool const isNull = state.Value.GetType() == OpcUaType_Null;
    if (isNull && state.Time == 0) {
        return OpcUa_BadNoData;
    }
    bool const asDataValue = type.Type == OpcUaType_DataValue;
    _OpcUa_BuiltInType const valueType = asDataValue ? type.ElementType : type.Type;
    OpcUa_StatusCode status = OpcUa_Good;
    if (isNull || valueType != OpcUaType_Null) {
        status = state.Value.ChangeType(valueType);
    }
    if (asDataValue) {
        value.SetDataValue(state.Value, state.Time, state.Status);
    } else {
        value = std::move(state.Value);
    }
    return status;
}
