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
    auto const id = static_cast<long long>(variables.size()) + 1;
    variables[id] = Variable{std::move(name), type, {}};
    return id;
}

bool VariableStore::Write(long long id, std::string const& field, OpcUa_Variant const& value,
                          long long time) {
    VariableState state = StateOf(value, time);
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = variables.find(id);
    if (found == variables.end()) {
        return false;
    }
    found->second.Fields[field] = std::move(state);
    return true;
}

bool VariableStore::Read(long long id, std::string const& field, VariableState& state) const {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = variables.find(id);
    if (found == variables.end()) {
        return false;
    }
    auto const stored = found->second.Fields.find(field);
    state = stored == found->second.Fields.end() ? VariableState() : stored->second;
    return true;
}

std::string VariableStore::Name(long long id) const {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = variables.find(id);
    return found == variables.end() ? std::string() : found->second.Name;
}

OpcUa_BuiltInTypeHlp VariableStore::Type(long long id) const {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = variables.find(id);
    return found == variables.end() ? OpcUa_BuiltInTypeHlp() : found->second.Type;
}
