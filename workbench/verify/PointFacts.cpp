#include "PointFacts.h"

#include <map>

#include "PropertyNames.h"
#include "Snapshot.h"
#include "SupportInformation.h"

namespace workbench {

namespace {

constexpr int StatusFlags = 111;
constexpr int LargestRequested = 255;

std::optional<PropertyTypeEnum> TypeOf(int objectType, int property) {
    SupportInformation const& table = *SupportInformation::GetInstance();
    try {
        PropertyTypeEnum const type = table
                                          .GetPropertyInfo(static_cast<ObjectTypeEnum>(objectType),
                                                           static_cast<PropertyIdentifierEnum>(property))
                                          .type;
        return table.GetPropertyParser(type) ? std::optional(type) : std::nullopt;
    } catch (SupportInformationException const&) {
        return std::nullopt;
    }
}

// What of this variable the driver cannot decode; empty for nothing.
std::string Undecodable(VariableConfig const& variable) {
    int const type = variable.objectType->bacnetNumber;
    int const property = variable.property->bacnetNumber;
    std::string const cannot = "the driver cannot decode ";
    if (property > LargestRequested) {
        return std::string("the driver requests ") +
               standard::PropertyText(static_cast<std::uint32_t>(property & LargestRequested)) +
               " in place of " + variable.property->name;
    }
    if (!TypeOf(type, property)) {
        return cannot + variable.property->name + " of " + variable.objectType->name;
    }
    return TypeOf(type, StatusFlags)
               ? std::string()
               : cannot + "status-flags of " + variable.objectType->name + ", which it always requests";
}

}  // namespace

std::vector<ObjectPoints> PolledObjects(BlockConfig const& block) {
    std::map<standard::ObjectId, std::vector<std::size_t>> objects;
    for (std::size_t i = 0; i < block.variables.size(); ++i) {
        VariableConfig const& variable = block.variables[i];
        objects[{static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
                 static_cast<std::uint32_t>(variable.objectNumber)}]
            .push_back(i);
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
            point.type = TypeOf(variable.objectType->bacnetNumber, variable.property->bacnetNumber);
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
