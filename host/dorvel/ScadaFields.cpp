#include "dorvel/ScadaFields.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <lua.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "LuaCall.h"

ScadaFields::IField::IField(std::string fieldName, bool fieldRetain, std::size_t fieldPosition)
    : name(std::move(fieldName)), retain(fieldRetain), position(fieldPosition) {}

ScadaFields::IField::~IField() = default;

void ScadaFields::IField::to_json(dorvel::JsonWrapper& /*json*/, void const* /*object*/) const {}

struct ScadaFields::Table {
    ScadaFields const* parent;
    std::vector<std::unique_ptr<IField const>> fields;
    // By name; the keys refer to the names in the fields.
    boost::unordered_flat_map<std::string_view, std::size_t> indices;

    IField const* Find(std::string_view name) const {
        auto const position = indices.find(name);
        if (position != indices.end()) {
            return fields[position->second].get();
        }
        return parent ? parent->table->Find(name) : nullptr;
    }
};

namespace {

// Pushes the field's value, nil for one without a script form.
void PushField(ScadaFields::IField const& field, void const* object, lua_State* L) {
    int const top = lua_gettop(L);
    field.set(object, L);
    if (lua_gettop(L) == top) {
        lua_pushnil(L);
    }
}

// The text of a key, empty when it has none. A number on the stack is replaced by its text.
std::string_view KeyAt(lua_State* L, int index) {
    std::size_t length = 0;
    char const* const text = lua_tolstring(L, index, &length);
    return text ? std::string_view(text, length) : std::string_view();
}

}  // namespace

ScadaFields::ScadaFields(ScadaFields const* parentFields) : table(new Table{parentFields, {}, {}}) {}

ScadaFields::~ScadaFields() = default;

void ScadaFields::add(IField const* field) {
    std::unique_ptr<IField const> owned(field);
    if (!owned) {
        throw std::invalid_argument("a field must not be null");
    }
    auto const position = table->indices.find(owned->name);
    if (position == table->indices.end()) {
        table->fields.push_back(std::move(owned));
        table->indices.emplace(field->name, table->fields.size() - 1);
        return;
    }
    std::size_t const index = position->second;
    table->indices.erase(position);  // its key refers to the old field
    table->fields[index] = std::move(owned);
    table->indices.emplace(field->name, index);
}

void ScadaFields::ReadAllFrom(void* object, lua_State* L) const {
    luaL_checktype(L, -1, LUA_TTABLE);
    if (table->parent) {
        table->parent->ReadAllFrom(object, L);
    }
    luaL_checkstack(L, 1, "fields");
    for (auto const& field : table->fields) {
        lua_getfield(L, -1, field->name.c_str());
        if (!lua_isnil(L, -1)) {
            dorvel::GuardLua(L, [&] {
                field->get(object, L);
                return 0;
            });
        }
        lua_pop(L, 1);
    }
}

int ScadaFields::ReadFrom(void* object, lua_State* L) const {
    IField const* const field = table->Find(KeyAt(L, -2));
    if (!field) {
        char const* const key = lua_tostring(L, -2);
        return luaL_error(L, "unknown field '%s'", key ? key : luaL_typename(L, -2));
    }
    return dorvel::GuardLua(L, [&] {
        field->get(object, L);
        return 0;
    });
}

int ScadaFields::WriteAllTo(void const* object, lua_State* L) const {
    luaL_checkstack(L, 2, "fields");
    if (table->parent) {
        table->parent->WriteAllTo(object, L);
    } else {
        lua_newtable(L);
    }
    for (auto const& field : table->fields) {
        PushField(*field, object, L);
        lua_setfield(L, -2, field->name.c_str());
    }
    return 1;
}

int ScadaFields::WriteTo(void const* object, lua_State* L) const {
    if (IField const* const field = table->Find(KeyAt(L, -1))) {
        PushField(*field, object, L);
    } else {
        lua_pushnil(L);
    }
    return 1;
}

std::size_t ScadaFields::size() const {
    return table->fields.size();
}

ScadaFields const* ScadaFields::parent() const {
    return table->parent;
}

std::vector<std::unique_ptr<ScadaFields::IField const>> const& ScadaFields::fields() const {
    return table->fields;
}

ScadaFields::IField const* ScadaFields::find(std::string const& name) const {
    return table->Find(name);
}
