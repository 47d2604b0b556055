#include "FieldReader.h"

#include <algorithm>
#include <cmath>

#include "Printable.h"
#include "Suggestion.h"

namespace workbench {

namespace {

constexpr char NamesHint[] = "; \"dorvel-workbench names\" lists them";

// A whole number, also one that a script writes or computes as 5.0.
std::optional<long long> WholeNumber(LuaValue const& value) {
    if (auto const* integer = value.As<long long>()) {
        return *integer;
    }
    auto const* number = value.As<double>();
    if (number && std::trunc(*number) == *number && std::fabs(*number) < 9.0e15) {
        return static_cast<long long>(*number);
    }
    return std::nullopt;
}

LuaValue const* FindField(LuaTable const& table, std::string_view name) {
    for (auto const& entry : table) {
        auto const* key = entry.first.As<std::string>();
        if (key && *key == name) {
            return &entry.second;
        }
    }
    return nullptr;
}

}  // namespace

std::string NameOf(LuaValue const& value) {
    auto const* table = value.As<LuaTable>();
    LuaValue const* const name = table ? FindField(*table, "Name") : nullptr;
    auto const* text = name ? name->As<std::string>() : nullptr;
    return text ? *text : std::string();
}

FieldReader::FieldReader(LuaValue const& value, std::vector<std::string> const& known)
    : table(value.As<LuaTable>()) {
    if (!table) {
        throw ProjectError("expected a table, got " + Describe(value));
    }
    for (auto const& entry : *table) {
        auto const* key = entry.first.As<std::string>();
        if (!key) {
            throw ProjectError("entry " + Describe(entry.first) + " has no field name; write Field = value");
        }
        if (std::find(known.begin(), known.end(), *key) == known.end()) {
            Refuse(tools::Printable(*key), "unknown" + tools::DidYouMean(*key, known));
        }
    }
}

void FieldReader::Refuse(std::string_view name, std::string const& mistake) {
    throw ProjectError("field \"" + std::string(name) + "\": " + mistake);
}

LuaValue const* FieldReader::Find(std::string_view name) const {
    return FindField(*table, name);
}

LuaValue const& FieldReader::Required(std::string_view name) const {
    LuaValue const* const value = Find(name);
    if (!value) {
        Refuse(name, "missing");
    }
    return *value;
}

std::optional<std::string> FieldReader::OptionalText(std::string_view name) const {
    LuaValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    auto const* text = value->As<std::string>();
    if (!text) {
        Refuse(name, "expected a text, got " + Describe(*value));
    }
    return *text;
}

std::string FieldReader::Text(std::string_view name) const {
    Required(name);
    std::string text = *OptionalText(name);
    if (text.empty()) {
        Refuse(name, "must not be empty");
    }
    return text;
}

std::optional<long long> FieldReader::OptionalInteger(std::string_view name, long long low,
                                                      long long high) const {
    LuaValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    auto const number = WholeNumber(*value);
    if (!number) {
        Refuse(name, "expected a whole number, got " + Describe(*value));
    }
    if (*number < low || *number > high) {
        Refuse(name, std::to_string(*number) + " is out of range; allowed is " + std::to_string(low) +
                         " to " + std::to_string(high));
    }
    return number;
}

long long FieldReader::Integer(std::string_view name, long long low, long long high) const {
    Required(name);
    return *OptionalInteger(name, low, high);
}

std::optional<bool> FieldReader::OptionalBoolean(std::string_view name) const {
    LuaValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    auto const* boolean = value->As<bool>();
    if (!boolean) {
        Refuse(name, "expected true or false, got " + Describe(*value));
    }
    return *boolean;
}

NameRow const* FieldReader::Name(std::string_view name, NameTable const& names, char const* what) const {
    LuaValue const& value = Required(name);
    auto const* text = value.As<std::string>();
    if (text) {
        NameRow const* const row = names.FindName(*text);
        if (!row) {
            std::string const suggestion = tools::DidYouMean(*text, names.Names());
            Refuse(name, Describe(value) + " is not " + what + (suggestion.empty() ? NamesHint : suggestion));
        }
        return row;
    }
    auto const code = WholeNumber(value);
    if (!code) {
        Refuse(name, std::string("expected a name or a code, got ") + Describe(value));
    }
    NameRow const* const row = names.FindCode(*code);
    if (!row) {
        Refuse(name, std::to_string(*code) + " is not the code of " + what + NamesHint);
    }
    return row;
}

}  // namespace workbench
