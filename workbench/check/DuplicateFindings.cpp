#include <algorithm>
#include <cctype>
#include <functional>
#include <map>

#include "BlockView.h"
#include "FindingFamilies.h"
#include "Printable.h"

namespace workbench {

namespace {

using Variables = std::vector<VariableConfig const*>;

void FindSameProperty(BlockConfig const& block, Variables const& object, Findings& findings) {
    std::map<PropertyIdentifierEnum, VariableConfig const*> first;
    for (VariableConfig const* const variable : object) {
        DriverAddress const address = AddressOf(*variable);
        auto const [other, isNew] = first.emplace(address.property, variable);
        bool const isRead =
            DecodedAs(address.objectType, address.property) && SentAs(*variable) == address.property;
        if (isNew || !isRead) {
            continue;
        }
        findings.push_back(OfVariable(
            FindingCode::DuplicateProperty, block, *variable, "ObjectProperties",
            "variable " + tools::Quoted(other->second->name) + " reads " + variable->property->name + " of " +
                ObjectText(*variable) +
                " already, and the driver gives the value to the first one only: this one " +
                (variable->write ? "can be written but never gets a value" : "never gets a value")));
    }
}

// What two blocks on one device have in common.
struct Overlap {
    BlockConfig const* earlier;
    VariableConfig const* first;
    std::size_t objects = 0;
};

Finding OfOverlap(BlockConfig const& block, Overlap const& overlap) {
    std::string const more =
        overlap.objects == 1 ? "" : " and " + Counted(overlap.objects - 1, "more object") + " of the device";
    return OfVariable(
        FindingCode::ObjectPolledTwice, block, *overlap.first, "ObjectNumber",
        "block " + tools::Quoted(overlap.earlier->name) + " polls " + ObjectText(*overlap.first) + more +
            " too: the device answers twice in each cycle, and a write in one block shows in the "
            "other one later");
}

// The blocks of one device, in the order of the project.
void FindSameObjects(std::vector<BlockConfig const*> const& blocks, Findings& findings) {
    std::map<Object, BlockConfig const*> first;
    for (BlockConfig const* const block : blocks) {
        std::map<BlockConfig const*, Overlap> overlaps;
        for (auto const& [object, variables] : ObjectsOf(*block)) {
            auto const [other, isNew] = first.emplace(object, block);
            if (!isNew) {
                Overlap& overlap =
                    overlaps.emplace(other->second, Overlap{other->second, variables.front()}).first->second;
                ++overlap.objects;
            }
        }
        for (auto const& overlap : overlaps) {
            findings.push_back(OfOverlap(*block, overlap.second));
        }
    }
}

std::string WithoutCaseAndBlanks(std::string const& name) {
    std::string key;
    for (unsigned char const c : name) {
        if (std::isspace(c) == 0) {
            key += static_cast<char>(std::tolower(c));
        }
    }
    return key;
}

// Names of one kind; equal ones have been reported already.
class Names {
public:
    // The earlier name that differs only in case or blanks; null without. An empty name has a mistake.
    std::string const* Similar(std::string const& name) {
        if (name.empty()) {
            return nullptr;
        }
        auto const [earlier, isNew] = names.emplace(WithoutCaseAndBlanks(name), name);
        return isNew || earlier->second == name ? nullptr : &earlier->second;
    }

private:
    std::map<std::string, std::string> names;
};

std::string Similarity(char const* kind, std::string const& name, std::string const& other) {
    return tools::Quoted(name) + " and the " + kind + " " + tools::Quoted(other) +
           " differ only in case or blanks: an operator takes one for the other";
}

}  // namespace

void FindDuplicates(Blocks const& blocks, Findings& findings) {
    std::map<Device, std::vector<BlockConfig const*>> devices;
    for (BlockConfig const& block : blocks) {
        for (auto const& object : ObjectsOf(block)) {
            FindSameProperty(block, object.second, findings);
        }
        Device const device = DeviceOf(block);
        if (IsKnown(device)) {
            devices[device].push_back(&block);
        }
    }
    for (auto const& device : devices) {
        FindSameObjects(device.second, findings);
    }
}

void FindSimilarNames(std::vector<TaskConfig> const& tasks, Blocks const& blocks, Findings& findings) {
    Names taskNames;
    for (TaskConfig const& task : tasks) {
        if (std::string const* const other = taskNames.Similar(task.name)) {
            findings.push_back({FindingCode::SimilarNames,
                                task.where,
                                {},
                                "task",
                                {},
                                "Name",
                                Similarity("task", task.name, *other),
                                {}});
        }
    }
    Names blockNames;
    for (BlockConfig const& block : blocks) {
        if (std::string const* const other = blockNames.Similar(block.name)) {
            findings.push_back(
                OfBlock(FindingCode::SimilarNames, block, "Name", Similarity("block", block.name, *other)));
        }
        Names variableNames;
        for (VariableConfig const& variable : block.variables) {
            if (std::string const* const other = variableNames.Similar(variable.name)) {
                findings.push_back(OfVariable(FindingCode::SimilarNames, block, variable, "Name",
                                              Similarity("variable", variable.name, *other)));
            }
        }
    }
}

}  // namespace workbench
