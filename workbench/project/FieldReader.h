#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Finding.h"
#include "NameTable.h"
#include "ProjectError.h"
#include "ScriptValue.h"

namespace workbench {

// Reads the named fields of a table of a project. Every mistake is a FieldError.
class FieldReader {
public:
    // FieldError for a value that is not a table. The value must outlive the reader.
    explicit FieldReader(tools::ScriptValue const& value);

    // Adds entries without a name and fields that are not known ones to the mistakes.
    void FindUnknown(std::vector<std::string> const& known, Findings& mistakes) const;

    tools::ScriptValue const* Find(std::string_view name) const;  // null when absent

    // Text requires the field, and a text that is not empty.
    std::string Text(std::string_view name) const;
    std::optional<std::string> OptionalText(std::string_view name) const;
    // A whole number from low to high.
    long long Integer(std::string_view name, long long low, long long high) const;
    std::optional<long long> OptionalInteger(std::string_view name, long long low, long long high) const;
    std::optional<bool> OptionalBoolean(std::string_view name) const;
    // A name or a code of the table; what is its kind in messages, with its article, such as "a property".
    NameRow const* Name(std::string_view name, NameTable const& table, char const* what) const;
    tools::ScriptValue const& Required(std::string_view name) const;

    [[noreturn]] static void Refuse(FindingCode code, std::string_view name, std::string const& mistake);

private:
    tools::ScriptValue const* table;
};

// The field "Name" of a table; empty when it is missing or not a text.
std::string NameOf(tools::ScriptValue const& value);

// Runs the function and returns true. A FieldError from it goes to the mistakes instead, so that the next
// field can be read.
template <typename Function>
bool Note(Findings& mistakes, Function function) {
    try {
        function();
        return true;
    } catch (FieldError const& mistake) {
        mistakes.push_back({mistake.Code(), {}, {}, {}, {}, mistake.Field(), mistake.what(), {}});
        return false;
    }
}

// Runs the function; puts context in front of a ProjectError from it.
template <typename Function>
auto InContext(std::string const& context, Function function) -> decltype(function()) {
    try {
        return function();
    } catch (ProjectError const& mistake) {
        throw ProjectError(context + mistake.what());
    }
}

}  // namespace workbench
