#include "ScriptValue.h"

namespace simulator {

ScriptValue const& ScriptValue::operator[](std::string const& name) const {
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
            return "nothing";
        case Type::Boolean:
            return boolean ? "true" : "false";
        case Type::Integer:
            return "the number " + std::to_string(integer);
        case Type::Number:
            return "the number " + std::to_string(number);
        case Type::Text:
            return "the text \"" + text + "\"";
        case Type::Table:
            break;
    }
    return kind.empty() ? "a table" : "a " + kind;
}

}  // namespace simulator
