#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

struct ScriptField;

// A value of a script as plain data, so that checks need neither a Lua state nor its jumps out of C++
// functions. A table made by a constructor (ScriptReader.h), such as ramp{...}, has that function's name as
// its kind and the line of the call.
struct ScriptValue {
    // Other is what is not data: a function, a userdata, a table below the depth that is read.
    enum class Type { Nil, Boolean, Integer, Number, Text, Table, Other };

    Type type = Type::Nil;
    bool boolean = false;
    std::int64_t integer = 0;
    double number = 0;  // of an Integer too
    std::string text;   // of an Other the name of its Lua type
    std::string kind;   // empty for a plain table
    int line = 0;
    std::vector<ScriptValue> list;    // the elements 1, 2, 3 ...
    std::vector<ScriptField> fields;  // the named ones, by name

    static ScriptValue OfBoolean(bool value);
    static ScriptValue OfInteger(std::int64_t value);
    static ScriptValue OfNumber(double value);
    static ScriptValue OfText(std::string value);

    bool IsNil() const { return type == Type::Nil; }
    bool IsBoolean() const { return type == Type::Boolean; }
    bool IsNumber() const { return type == Type::Integer || type == Type::Number; }
    bool IsText() const { return type == Type::Text; }
    bool IsTable() const { return type == Type::Table; }
    bool IsPlainTable() const { return IsTable() && kind.empty(); }
    bool IsMade(std::string const& by) const { return IsTable() && kind == by; }

    // The field of that name, or a Nil.
    ScriptValue const& operator[](std::string_view name) const;

    // The value as a message shows it: a number, a quoted text, a table by what made it ("a ramp").
    std::string Describe() const;
};

struct ScriptField {
    std::string name;
    ScriptValue value;
};

}  // namespace tools
