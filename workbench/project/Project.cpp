#include "Project.h"

namespace workbench {

std::string ObjectText(VariableConfig const& variable) {
    return std::string(variable.objectType->name) + " " + std::to_string(variable.objectNumber);
}

}  // namespace workbench
