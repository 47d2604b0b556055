#include "TypeName.h"

#include <strings.h>
#include <algorithm>

namespace workbench {

namespace {

struct TypeRow {
    _OpcUa_BuiltInType type;
    char const* name;
};

constexpr TypeRow TypeRows[] = {
    {OpcUaType_Boolean, "Boolean"},
    {OpcUaType_SByte, "SByte"},
    {OpcUaType_Byte, "Byte"},
    {OpcUaType_Int16, "Int16"},
    {OpcUaType_UInt16, "UInt16"},
    {OpcUaType_Int32, "Int32"},
    {OpcUaType_UInt32, "UInt32"},
    {OpcUaType_Int64, "Int64"},
    {OpcUaType_UInt64, "UInt64"},
    {OpcUaType_Float, "Float"},
    {OpcUaType_Double, "Double"},
    {OpcUaType_String, "String"},
    {OpcUaType_DateTime, "DateTime"},
    {OpcUaType_ByteString, "ByteString"},
    {OpcUaType_StatusCode, "StatusCode"},
    {OpcUaType_DataValue, "DataValue"},
};

template <typename Predicate>
TypeRow const* FindRow(Predicate predicate) {
    auto const row = std::find_if(std::begin(TypeRows), std::end(TypeRows), predicate);
    return row == std::end(TypeRows) ? nullptr : row;
}

std::string NameOf(_OpcUa_BuiltInType type) {
    TypeRow const* const row = FindRow([=](TypeRow const& r) { return r.type == type; });
    return row ? row->name : "Type " + std::to_string(type);
}

}  // namespace

std::optional<_OpcUa_BuiltInType> FindType(std::string_view name) {
    std::string const text(name);
    TypeRow const* const row =
        FindRow([&](TypeRow const& r) { return strcasecmp(r.name, text.c_str()) == 0; });
    return row && text.size() == std::string_view(row->name).size() ? std::optional(row->type) : std::nullopt;
}

std::optional<_OpcUa_BuiltInType> FindType(long long number) {
    TypeRow const* const row = FindRow([=](TypeRow const& r) { return r.type == number; });
    return row ? std::optional(row->type) : std::nullopt;
}

std::vector<std::string> TypeNames() {
    std::vector<std::string> names;
    for (TypeRow const& row : TypeRows) {
        names.emplace_back(row.name);
    }
    return names;
}

std::string TypeName(OpcUa_BuiltInTypeHlp const& type) {
    if (type.Type != OpcUaType_DataValue) {
        return NameOf(type.Type);
    }
    return "DataValue(" + NameOf(type.ElementType) + ")";
}

}  // namespace workbench
