#include "PointFacts.h"

#include <map>

#include "DriverTables.h"
#include "PointSupport.h"
#include "Snapshot.h"

namespace workbench {

namespace {

standard::ObjectId ObjectOf(VariableConfig const& variable) {
    return {static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
            static_cast<std::uint32_t>(variable.objectNumber)};
}

// What of this variable the driver cannot decode; empty for nothing.
std::string Undecodable(VariableConfig const& variable) {
    return SupportOf(ObjectOf(variable), static_cast<standard::PropertyId>(variable.property->bacnetNumber))
        .whyNot;
}

}  // namespace

std::vector<ObjectPoints> PolledObjects(BlockConfig const& block) {
    std::map<standard::ObjectId, std::vector<std::size_t>> objects;
    for (std::size_t i = 0; i < block.variables.size(); ++i) {
        VariableConfig const& variable = block.variables[i];
        objects[ObjectOf(variable)].push_back(i);
    }
    std::vector<ObjectPoints> result;
    for (auto& [object, points] : objects) {
        result.push_back({object, std::move(points)});
    }
    return result;
}

std::vector<PointFacts> FactsOf(BlockConfig const& block, long long localDiff) {
    std::vector<PointFacts> facts(block.variables.size());
    for (ObjectPoints const& object : PolledObjects(block)) {
        std::string undecodable;
        std::map<int, std::string> readers;  // the first variable of each property
        for (std::size_t const i : object.points) {
            VariableConfig const& variable = block.variables[i];
            PointFacts& point = facts[i];
            point.declared = variable.type;
            point.object = ObjectText(variable);
            point.localDiff = localDiff;
            point.type = DecodedAs(static_cast<ObjectTypeEnum>(variable.objectType->bacnetNumber),
                                   static_cast<PropertyIdentifierEnum>(variable.property->bacnetNumber));
            auto const [reader, isFirst] = readers.emplace(variable.property->bacnetNumber, variable.name);
            point.readBefore = isFirst ? std::string() : reader->second;
            undecodable = undecodable.empty() ? Undecodable(variable) : undecodable;
        }
        for (std::size_t const i : object.points) {
            std::string const own = Undecodable(block.variables[i]);
            facts[i].undecodable = own.empty() ? undecodable : own;
        }
    }
    return facts;
}

}  // namespace workbench
