#include "Finding.h"

#include "Printable.h"

namespace workbench {

std::string Finding::Text() const {
    std::string text = block.empty() ? "" : "block " + tools::Quoted(block) + ": ";
    if (!subject.empty()) {
        text += subject + ": ";
    }
    if (!variable.empty()) {
        text += "variable " + tools::Quoted(variable) + ": ";
    }
    if (!field.empty()) {
        text += "field \"" + tools::Printable(field) + "\": ";
    }
    return text + message;
}

std::string Finding::FullMessage() const {
    std::string const effect = RowOf(code).effect;
    return message + (effect.empty() ? "" : ": " + effect);
}

}  // namespace workbench
