#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "HostApi.h"

struct lua_State;

namespace dorvel {
class JsonWrapper;
}

// The script-visible fields of a type, in the order in which they were added.
class DORVEL_HOST_API ScadaFields {
public:
    // One field: transfers its value between an object and a script. position is the offset of the value in
    // the object, in octets.
    class DORVEL_HOST_API IField {
    public:
        IField(std::string fieldName, bool fieldRetain, std::size_t fieldPosition);

        // Pushes the object's value on the Lua stack. A field that has no script form pushes nothing.
        virtual void set(void const* object, lua_State* L) const = 0;
        // Reads the value at the top of the stack into the object; leaves the stack unchanged.
        virtual void get(void* object, lua_State* L) const = 0;
        virtual void to_json(dorvel::JsonWrapper& json, void const* object) const;
        // The type's full name, or null for a field that is not declared to the type system.
        virtual char const* lua_type() const = 0;
        virtual ~IField();

        std::string name;
        bool retain;
        std::size_t position;
    };

    explicit ScadaFields(ScadaFields const* parentFields = nullptr);
    ~ScadaFields();

    // Takes ownership of the field. It replaces a field of the same name at its index. std::invalid_argument
    // for null.
    void add(IField const* field);

    // Reads all fields from the table at the top of the stack; a field whose key is absent is unchanged.
    void ReadAllFrom(void* object, lua_State* L) const;
    // Reads one field from the key and the value on top of the stack. An unknown key is a Lua error. Returns
    // 0.
    int ReadFrom(void* object, lua_State* L) const;
    // Pushes a table of all fields; returns 1.
    int WriteAllTo(void const* object, lua_State* L) const;
    // Pushes the field whose key is at the top of the stack, nil for an unknown key or a field without a
    // script form; returns 1.
    int WriteTo(void const* object, lua_State* L) const;

    std::size_t size() const;
    ScadaFields const* parent() const;
    // In the order in which they were added.
    std::vector<std::unique_ptr<IField const>> const& fields() const;
    IField const* find(std::string const& name) const;

private:
    struct Table;
    std::unique_ptr<Table> table;
};
