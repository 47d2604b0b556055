#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

struct ScriptField;

// A value of a device file, read from Lua. A table made by one of the file's functions, such as
// ramp{...}, carries that function's name as its kind and the line of the call.
struct ScriptValue {
    enum class Type { Nil, Boolean, Integer, Number, Text, Table };

    Type type = Type::Nil;
    bool boolean = false;
    std::int64_t integer = 0;
    double number = 0;  // of an Integer too
    std::string text;
    std::string kind;  // empty for a plain table
    int line = 0;
    std::vector<ScriptValue> list;    // the elements 1, 2, 3 ...
    std::vector<ScriptField> fields;  // the named ones, by name

    bool IsNil() const { return type == Type::Nil; }
    bool IsNumber() const { return type == Type::Integer || type == Type::Number; }
    bool IsPlainTable() const { return type == Type::Table && kind.empty(); }
    bool IsMade(std::string const& by) const { return type == Type::Table && kind == by; }
    // The field of that name, or a Nil.
    ScriptValue const& operator[](std::string const& name) const;
    // What it is, for a message: "a number", "a ramp".
    std::string Describe() const;
};

struct ScriptField {
    std::string name;
    ScriptValue value;
};

}  // namespace simulator
