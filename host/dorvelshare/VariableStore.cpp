#include "dorvelshare/VariableStore.h"

namespace {

VariableState StateOf(OpcUa_Variant const& value, OpcUa_StatusCode status, long long time) {
    VariableState state;
    OpcUa_VariantHlp::CopyVariants(&state.Value, &value);
    state.Status = status;
    state.Time = time;
    return state;
}

VariableState StateOf(OpcUa_Variant const& value, long long time) {
    if (value.Datatype == OpcUaType_DataValue) {
        OpcUa_DataValue const& data = *value.Value.DataValue;
        return StateOf(data.Value, data.StatusCode, data.SourceTimestamp != 0 ? data.SourceTimestamp : time);
    }
    return StateOf(value, value.Datatype == OpcUaType_Null ? OpcUa_BadNoData : OpcUa_Good, time);
}

}  // namespace

VariableState const* VariableStore::Variable::Find(std::string const& field) const {
    if (field.empty()) {
        return &Whole;
    }
    auto const stored = Fields.find(field);
    return stored == Fields.end() ? nullptr : &stored->second;
}

long long VariableStore::Declare(std::string name, OpcUa_BuiltInTypeHlp type) {
    std::lock_guard<std::mutex> const lock(mutex);
    variables.push_back({std::move(name), type, {}, {}});
    return static_cast<long long>(variables.size());
}

bool VariableStore::Write(long long id, std::string const& field, OpcUa_Variant const& value,
                          long long time) {
    VariableState state = StateOf(value, time);
    std::lock_guard<std::mutex> const lock(mutex);
    if (!IsDeclared(id)) {
        return false;
    }
    Variable& variable = variables[IndexOf(id)];
    (field.empty() ? variable.Whole : variable.Fields[field]) = std::move(state);
    return true;
}

bool VariableStore::Read(long long id, std::string const& field, VariableState& state) const {
    std::lock_guard<std::mutex> const lock(mutex);
    if (!IsDeclared(id)) {
        return false;
    }
    VariableState const* const stored = variables[IndexOf(id)].Find(field);
    state = stored ? *stored : VariableState();
    return true;
}

std::string VariableStore::Name(long long id) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return IsDeclared(id) ? variables[IndexOf(id)].Name : std::string();
}

OpcUa_BuiltInTypeHlp VariableStore::Type(long long id) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return IsDeclared(id) ? variables[IndexOf(id)].Type : OpcUa_BuiltInTypeHlp();
}
