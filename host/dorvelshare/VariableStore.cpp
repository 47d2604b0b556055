#include "dorvelshare/VariableStore.h"

namespace {

VariableState StateOf(OpcUa_Variant const& value, long long time) {
    VariableState state;
    OpcUa_VariantHlp::CopyVariants(&state.Value, &value);
    state.Status = value.Datatype == OpcUaType_Null ? OpcUa_BadNoData : OpcUa_Good;
    state.Time = time;
    if (value.Datatype == OpcUaType_DataValue) {
        long long const source = value.Value.DataValue->SourceTimestamp;
        state.Time = source != 0 ? source : time;
        state.Value.Normalize(&state.Status, nullptr);
    }
    return state;
}

}  // namespace

long long VariableStore::Declare(std::string name, OpcUa_BuiltInTypeHlp type) {
    std::lock_guard<std::mutex> const lock(mutex);
    variables.push_back({std::move(name), type, {}});
    return static_cast<long long>(variables.size());
}

bool VariableStore::Write(long long id, std::string const& field, OpcUa_Variant const& value,
                          long long time) {
    VariableState state = StateOf(value, time);
    std::lock_guard<std::mutex> const lock(mutex);
    if (!IsDeclared(id)) {
        return false;
    }
    variables[IndexOf(id)].Fields[field] = std::move(state);
    return true;
}

bool VariableStore::Read(long long id, std::string const& field, VariableState& state) const {
    std::lock_guard<std::mutex> const lock(mutex);
    if (!IsDeclared(id)) {
        return false;
    }
    auto const& fields = variables[IndexOf(id)].Fields;
    auto const stored = fields.find(field);
    state = stored == fields.end() ? VariableState() : stored->second;
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
