#include "PointTable.h"

#include <algorithm>

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
        auto const property = static_cast<std::uint32_t>(block.variables[i].property->bacnetNumber);
        objects[ObjectOf(block.variables[i])].emplace_back(property, i);
    }
    for (auto& object : objects) {
        std::sort(object.second.begin(), object.second.end());
    }
}

std::size_t PointTable::IndexOf(VariableConfig const& variable) const {
    return static_cast<std::size_t>(&variable - block.variables.data());
}

VariableConfig const* PointTable::AnyOf(standard::ObjectId const& object) const {
    auto const found = objects.find(object);
    return found == objects.end() ? nullptr : &block.variables[found->second.front().second];
}

VariableConfig const* PointTable::OnlyOf(standard::ObjectId const& object) const {
    auto const found = objects.find(object);
    return found == objects.end() || found->second.size() > 1
               ? nullptr
               : &block.variables[found->second.front().second];
}

bool PointTable::Has(standard::ObjectId const& object, std::uint32_t property) const {
    auto const found = objects.find(object);
    if (found == objects.end()) {
        return false;
    }
    Points const& points = found->second;
    auto const point = std::lower_bound(points.begin(), points.end(), Point{property, 0});
    return point != points.end() && point->first == property;
}

void PointTable::BeginCycle() {
    for (PointState& state : states) {
        state.isFresh = false;
    }
}

void PointTable::Keep(std::vector<standard::ReadResult> results) {
    auto const owner = std::make_shared<std::vector<standard::ReadResult> const>(std::move(results));
    for (standard::ReadResult const& result : *owner) {
        auto const object = objects.find(result.reference.object);
        if (object == objects.end()) {
            continue;
        }
        Points const& points = object->second;
        auto point = std::lower_bound(points.begin(), points.end(), Point{result.reference.property, 0});
        for (; point != points.end() && point->first == result.reference.property; ++point) {
            KeepFor(point->second, result, owner);
        }
    }
}

void PointTable::KeepFor(std::size_t index, standard::ReadResult const& result,
                         std::shared_ptr<std::vector<standard::ReadResult> const> const& owner) {
    PointState& state = states[index];
    state.isFresh = true;
    if (result.failure) {
        state.suspect = "device: " + standard::ErrorCodeText(result.failure->code);
        return;
    }
    state.suspect.clear();
    if (block.variables[index].write) {
        state.values = std::shared_ptr<PointState::Values const>(owner, &result.values);
    }
}

}  // namespace workbench
