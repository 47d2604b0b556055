#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Project.h"
#include "ValueChanges.h"

namespace workbench {

// The topics of a project in JSON, made once:
//
//   PREFIX/$state                       the process
//   PREFIX/BLOCK/$state                 a block
//   PREFIX/BLOCK/VARIABLE               a variable
//   PREFIX/BLOCK/VARIABLE/set           commands for it
//   PREFIX/BLOCK/VARIABLE/set/state     the answers
//
// BLOCK and VARIABLE are EscapedLevel of the names.
class PlantTopics {
public:
    // ProjectError if two blocks, or two variables of a block, would have the same topic, or if the prefix
    // cannot be one.
    PlantTopics(std::string const& topicPrefix, std::deque<BlockConfig> const& blocks);

    std::string State() const { return prefix + "/$state"; }
    std::string BlockState(std::size_t block) const { return blockTopics[block] + "/$state"; }
    std::string const& Variable(VariablePlace place) const { return topics[place.block][place.variable]; }
    std::string Answer(VariablePlace place) const { return Variable(place) + "/set/state"; }
    // A filter that has all topics of commands.
    std::string CommandFilter() const { return prefix + "/+/+/set"; }
    // Whether it has this topic, for a variable that exists or not.
    bool IsCommand(std::string const& topic) const;
    // The variable for which a topic has commands; none for any other topic.
    std::optional<VariablePlace> CommandPlace(std::string_view topic) const;

private:
    void AddVariables(BlockConfig const& block);

    std::string prefix;
    std::vector<std::string> blockTopics;
    std::vector<std::vector<std::string>> topics;
    std::unordered_map<std::string_view, VariablePlace> places;  // the keys are texts of topics
};

}  // namespace workbench
