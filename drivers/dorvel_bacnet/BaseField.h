#pragma once

#include <lua.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "dorvel/JsonWrapper.h"
#include "dorvel/ScadaFields.h"
#include "dorvel/ScadaProtocol.h"

namespace SCADA_API {

// Converts a value of type V between an object, a Lua stack and JSON: Push, Read from the top of the stack,
// ToJson, and the name of the type in the host's type system (null for a type that is not declared there).
template <class V>
struct FieldValue;

// The common base of the integer types. A Lua value that is not an integer, such as a number with a fraction,
// reads as 0. A number that is too large for V is cut.
template <class V>
struct IntegerFieldValue {
    static void Push(lua_State* L, V const& value) { lua_pushinteger(L, static_cast<lua_Integer>(value)); }
    static void Read(lua_State* L, V& value) { value = static_cast<V>(lua_tointegerx(L, -1, nullptr)); }
    static void ToJson(dorvel::JsonWrapper& json, V const& value) {
        if (json.HasValue()) {
            json.Value().SetInt64(static_cast<std::int64_t>(value));
        }
    }
};

template <>
struct FieldValue<int> : IntegerFieldValue<int> {
    static constexpr char const* TypeName = "TYPES.Elementary.DINT";
};

template <>
struct FieldValue<ProtocolWriteCondition> : IntegerFieldValue<ProtocolWriteCondition> {
    static constexpr char const* TypeName = "TYPES.Elementary.DINT";
};

template <>
struct FieldValue<long long> : IntegerFieldValue<long long> {
    static constexpr char const* TypeName = "TYPES.Elementary.LINT";
};

template <>
struct FieldValue<bool> {
    static constexpr char const* TypeName = "TYPES.Elementary.BOOL";
    static void Push(lua_State* L, bool const& value) { lua_pushboolean(L, value); }
    static void Read(lua_State* L, bool& value) { value = lua_toboolean(L, -1) != 0; }
    static void ToJson(dorvel::JsonWrapper& json, bool const& value) {
        if (json.HasValue()) {
            json.Value().SetBool(value);
        }
    }
};

// A Lua value without a text reads as the empty text.
template <>
struct FieldValue<std::string> {
    static constexpr char const* TypeName = "TYPES.Elementary.STRING";
    static void Push(lua_State* L, std::string const& value) {
        lua_pushlstring(L, value.data(), value.size());
    }
    static void Read(lua_State* L, std::string& value) {
        std::size_t length = 0;
        char const* text = lua_tolstring(L, -1, &length);
        value.assign(text ? text : "", length);
    }
    static void ToJson(dorvel::JsonWrapper& json, std::string const& value) {
        json.Value().SetString(value.data(), static_cast<rapidjson::SizeType>(value.size()),
                               json.GetAllocator());
    }
};

// The list of variables can be read from a script only; it is never written to one.
template <>
struct FieldValue<ScadaProtocol::Channels> {
    static constexpr char const* TypeName = nullptr;
    static void Push(lua_State*, ScadaProtocol::Channels const&) {}
    static void Read(lua_State* L, ScadaProtocol::Channels& value) { get_lua_value(value, L); }
    static void ToJson(dorvel::JsonWrapper&, ScadaProtocol::Channels const&) {}
};

// One field of type V in objects of type T that a script can use. The object of every call must be a T.
template <class T, class V>
class BaseField : public ScadaFields::IField {
public:
    BaseField(std::string fieldName, bool fieldRetain, std::size_t fieldPosition)
        : IField(std::move(fieldName), fieldRetain, fieldPosition) {}

    void set(void const* object, lua_State* L) const override { FieldValue<V>::Push(L, ValueIn(object)); }
    void get(void* object, lua_State* L) const override {
        FieldValue<V>::Read(L, const_cast<V&>(ValueIn(object)));
    }
    void to_json(dorvel::JsonWrapper& json, void const* object) const override {
        FieldValue<V>::ToJson(json, ValueIn(object));
    }
    char const* lua_type() const override { return FieldValue<V>::TypeName; }

private:
    V const& ValueIn(void const* object) const {
        return *static_cast<V const*>(static_cast<void const*>(static_cast<char const*>(object) + position));
    }
};

}  // namespace SCADA_API
