#include "ScriptValue.h"

#include <utility>

#include "NumberText.h"
#include "Printable.h"

namespace tools {

namespace {

std::string WithArticle(std::string const& noun) {
    bool const beginsWithVowel = std::string_view("aeiou").find(noun.front()) != std::string_view::npos;
    return (beginsWithVowel ? "an " : "a ") + noun;
}

}  // namespace

ScriptValue ScriptValue::OfBoolean(bool value) {
    ScriptValue result;
    result.type = Type::Boolean;
    result.boolean = value;
    return result;
}

ScriptValue ScriptValue::OfInteger(std::int64_t value) {
    ScriptValue result;
    result.type = Type::Integer;
    result.integer = value;
    result.number = static_cast<double>(value);
    return result;
}

ScriptValue ScriptValue::OfNumber(double value) {
    ScriptValue result;
    result.type = Type::Number;
    result.number = value;
    return result;
}

ScriptValue ScriptValue::OfText(std::string value) {
    ScriptValue result;
    result.type = Type::Text;
    result.text = std::move(value);
    return result;
}

ScriptValue const& ScriptValue::operator[](std::string_view name) const {
    static ScriptValue const nil;
    for (ScriptField const& field : fields) {
        if (field.name == name) {
            return field.value;
        }
    }
    return nil;
}

std::string ScriptValue::Describe() const {
    switch (type) {
        case Type::Nil:
            return "nil";
        case Type::Boolean:
            return boolean ? "true" : "false";
        case Type::Integer:
            return std::to_string(integer);
        case Type::Number:
            return NumberText(number);
        case Type::Text:
            return Quoted(text);
        case Type::Table:
            return kind.empty() ? "a table" : WithArticle(kind);
        case Type::Other:
            break;
    }
    return "a " + text;
}

}  // namespace tools
