#include "ChosenVariables.h"

#include <numeric>

namespace workbench {

ChosenVariables AllVariables(BlockSnapshot const& block) {
    ChosenVariables all(block.variables.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

}  // namespace workbench
