#include "FieldReader.h"

#include <algorithm>
#include <cmath>

#include "Suggestion.h"

namespace workbench {

using tools::ScriptValue;

namespace {

constexpr char NamesHint[] = "; \"dorvel-workbench names\" lists them";

// A whole number, also one that a script writes or computes as 5.0.
std::optional<long long> WholeNumber(ScriptValue const& value) {
    if (value.type == ScriptValue::Type::Integer) {
        return value.integer;
    }
    if (value.IsNumber() && std::trunc(value.number) == value.number && std::fabs(value.number) < 9.0e15) {
        return static_cast<long long>(value.number);
    }
    return std::nullopt;
}

}  // namespace

std::string NameOf(ScriptValue const& value) {
    ScriptValue const& name = value["Name"];
    return name.IsText() ? name.text : std::string();
}

FieldReader::FieldReader(ScriptValue const& value) : table(&value) {
    if (!value.IsTable()) {
        Refuse(FindingCode::WrongKind, "", "expected a table, got " + value.Describe());
    }
}

void FieldReader::FindUnknown(std::vector<std::string> const& known, Findings& mistakes) const {
    if (!table->list.empty()) {
        Note(mistakes,
             [] { Refuse(FindingCode::UnnamedEntry, "", "entry 1 has no field name; write Field = value"); });
    }
    for (tools::ScriptField const& field : table->fields) {
        if (std::find(known.begin(), known.end(), field.name) == known.end()) {
            Note(mistakes, [&] {
                Refuse(FindingCode::UnknownField, field.name,
                       "unknown" + tools::DidYouMean(field.name, known));
            });
        }
    }
}

void FieldReader::Refuse(FindingCode code, std::string_view name, std::string const& mistake) {
    throw FieldError(code, std::string(name), mistake);
}

ScriptValue const* FieldReader::Find(std::string_view name) const {
    ScriptValue const& value = (*table)[name];
    return value.IsNil() ? nullptr : &value;
}

ScriptValue const& FieldReader::Required(std::string_view name) const {
    ScriptValue const* const value = Find(name);
    if (!value) {
        Refuse(FindingCode::MissingField, name, "missing");
    }
    return *value;
}

std::optional<std::string> FieldReader::OptionalText(std::string_view name) const {
    ScriptValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    if (!value->IsText()) {
        Refuse(FindingCode::WrongKind, name, "expected a text, got " + value->Describe());
    }
    return value->text;
}

std::string FieldReader::Text(std::string_view name) const {
    Required(name);
    std::string text = *OptionalText(name);
    if (text.empty()) {
        Refuse(FindingCode::EmptyText, name, "must not be empty");
    }
    return text;
}

std::optional<long long> FieldReader::OptionalInteger(std::string_view name, long long low,
                                                      long long high) const {
    ScriptValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    auto const number = WholeNumber(*value);
    if (!number) {
        Refuse(FindingCode::WrongKind, name, "expected a whole number, got " + value->Describe());
    }
    if (*number < low || *number > high) {
        Refuse(FindingCode::OutOfRange, name,
               std::to_string(*number) + " is out of range; allowed is " + std::to_string(low) + " to " +
                   std::to_string(high));
    }
    return number;
}

long long FieldReader::Integer(std::string_view name, long long low, long long high) const {
    Required(name);
    return *OptionalInteger(name, low, high);
}

std::optional<bool> FieldReader::OptionalBoolean(std::string_view name) const {
    ScriptValue const* const value = Find(name);
    if (!value) {
        return std::nullopt;
    }
    if (!value->IsBoolean()) {
        Refuse(FindingCode::WrongKind, name, "expected true or false, got " + value->Describe());
    }
    return value->boolean;
}

NameRow const* FieldReader::Name(std::string_view name, NameTable const& names, char const* what) const {
    ScriptValue const& value = Required(name);
    if (value.IsText()) {
        NameRow const* const row = names.FindName(value.text);
        if (!row) {
            std::string const suggestion = tools::DidYouMean(value.text, names.Names());
            Refuse(FindingCode::UnknownName, name,
                   value.Describe() + " is not " + what + (suggestion.empty() ? NamesHint : suggestion));
        }
        return row;
    }
    auto const code = WholeNumber(value);
    if (!code) {
        Refuse(FindingCode::WrongKind, name,
               std::string("expected a name or a code, got ") + value.Describe());
    }
    NameRow const* const row = names.FindCode(*code);
    if (!row) {
        Refuse(FindingCode::UnknownName, name,
               std::to_string(*code) + " is not the code of " + what + NamesHint);
    }
    return row;
}

}  // namespace workbench
