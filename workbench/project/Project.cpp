#include "Project.h"

namespace workbench {

bool IsRefused(BlockConfig const& block, std::string_view field) {
    return block.refused.find(field) != block.refused.end();
}

std::string ObjectText(VariableConfig const& variable) {
    return std::string(variable.objectType->name) + " " + std::to_string(variable.objectNumber);
}

}  // namespace workbench
