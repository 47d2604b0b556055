#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LuaValue.h"
#include "NameTable.h"
#include "ProjectError.h"

namespace workbench {

// Reads the named fields of a table of a project. Every mistake is a ProjectError that begins with
// "field \"Name\": "; InContext puts in front whose field it is.
class FieldReader {
public:
    // Refuses values that are no table, keys that are no text and fields that are not among the known ones.
    // The value has to outlive the reader.
    FieldReader(LuaValue const& value, std::vector<std::string> const& known);

    LuaValue const* Find(std::string_view name) const;  // null when absent

    // Text demands the field, and something in it.
    std::string Text(std::string_view name) const;
    std::optional<std::string> OptionalText(std::string_view name) const;
    // A whole number from low to high.
    long long Integer(std::string_view name, long long low, long long high) const;
    std::optional<long long> OptionalInteger(std::string_view name, long long low, long long high) const;
    std::optional<bool> OptionalBoolean(std::string_view name) const;
    // A name or code of the table; what says of what kind the names are.
    NameRow const* Name(std::string_view name, NameTable const& table, char const* what) const;
    LuaValue const& Required(std::string_view name) const;

    [[noreturn]] static void Refuse(std::string_view name, std::string const& mistake);

private:
    LuaTable const* table;
};

// The field "Name" of a table; "" for a table without a usable one.
std::string NameOf(LuaValue const& value);

// Runs the function; a ProjectError out of it gets context in front.
template <typename Function>
auto InContext(std::string const& context, Function function) -> decltype(function()) {
    try {
        return function();
    } catch (ProjectError const& mistake) {
        throw ProjectError(context + mistake.what(), mistake.Variable(), mistake.Occurrence());
    }
}

}  // namespace workbench
