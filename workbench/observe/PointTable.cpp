#include "PointTable.h"

#include "ErrorNames.h"
#include "Failure.h"

namespace workbench {

namespace {

standard::ObjectId ObjectOf(VariableConfig const& variable) {
    return {static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
            static_cast<std::uint32_t>(variable.objectNumber)};
}

}  // namespace

PointTable::PointTable(BlockConfig const& blockConfig)
    : block(blockConfig), states(block.variables.size()), writes(block.variables.size()) {
    for (std::size_t i = 0; i < block.variables.size(); ++i) {
        objects[ObjectOf(block.variables[i])].push_back(i);
    }
}

std::size_t PointTable::IndexOf(VariableConfig const& variable) const {
    return static_cast<std::size_t>(&variable - block.variables.data());
}

VariableConfig const* PointTable::AnyOf(standard::ObjectId const& object) const {
    auto const found = objects.find(object);
    return found == objects.end() ? nullptr : &block.variables[found->second.front()];
}

VariableConfig const* PointTable::OnlyOf(standard::ObjectId const& object) const {
    auto const found = objects.find(object);
    return found == objects.end() || found->second.size() > 1 ? nullptr
                                                              : &block.variables[found->second.front()];
}

void PointTable::BeginCycle() {
    for (PointState& state : states) {
        state.isFresh = false;
    }
}

void PointTable::Keep(standard::ReadResult const& result) {
    auto const found = objects.find(result.reference.object);
    if (found == objects.end()) {
        return;
    }
    for (std::size_t const index : found->second) {
        if (static_cast<std::uint32_t>(block.variables[index].property->bacnetNumber) !=
            result.reference.property) {
            continue;
        }
        PointState& state = states[index];
        state.isFresh = true;
        if (result.failure) {
            state.suspect = "device: " + standard::ErrorCodeText(result.failure->code);
        } else {
            state.suspect.clear();
            state.values = result.values;
        }
    }
}

}  // namespace workbench
