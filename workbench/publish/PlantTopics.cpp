#include "PlantTopics.h"

#include <algorithm>

#include "Place.h"
#include "Printable.h"
#include "ProjectError.h"
#include "TopicLevel.h"

namespace workbench {

namespace {

constexpr std::string_view CommandEnd = "/set";

bool EndsInSet(std::string_view topic) {
    return topic.size() > CommandEnd.size() && topic.substr(topic.size() - CommandEnd.size()) == CommandEnd;
}

[[noreturn]] void RefuseTwins(char const* kind, std::string const& name, std::string const& other,
                              std::string const& topic, Place const& where) {
    throw ProjectError(Prefix(where) + kind + " " + tools::Quoted(name) + " has the same topic " +
                       tools::Quoted(topic) + " as " + tools::Quoted(other) +
                       "; each needs its own: give one of them a shorter name");
}

}  // namespace

PlantTopics::PlantTopics(std::string const& topicPrefix, std::deque<BlockConfig> const& blocks)
    : prefix(topicPrefix) {
    std::string const mistake = PrefixMistake(prefix);
    if (!mistake.empty()) {
        throw ProjectError("the prefix of the topics: " + mistake);
    }
    std::unordered_map<std::string, std::string const*> known;
    for (BlockConfig const& block : blocks) {
        std::string const topic = prefix + "/" + EscapedLevel(block.name);
        auto const [twin, isNew] = known.try_emplace(topic, &block.name);
        if (!isNew) {
            RefuseTwins("the block", block.name, *twin->second, topic, block.where.place);
        }
        blockTopics.push_back(topic);
        AddVariables(block);
    }
    for (std::size_t block = 0; block < topics.size(); ++block) {
        for (std::size_t variable = 0; variable < topics[block].size(); ++variable) {
            places.emplace(topics[block][variable], VariablePlace{block, variable});
        }
    }
}

void PlantTopics::AddVariables(BlockConfig const& block) {
    std::unordered_map<std::string, std::string const*> known;
    std::vector<std::string> variables;
    for (VariableConfig const& variable : block.variables) {
        std::string const topic = blockTopics.back() + "/" + EscapedLevel(variable.name);
        auto const [twin, isNew] = known.try_emplace(topic, &variable.name);
        if (!isNew) {
            RefuseTwins("the variable", variable.name, *twin->second, topic, variable.where.place);
        }
        variables.push_back(topic);
    }
    topics.push_back(std::move(variables));
}

bool PlantTopics::IsCommand(std::string const& topic) const {
    bool const isInside = topic.size() > prefix.size() && topic.compare(0, prefix.size(), prefix) == 0 &&
                          topic[prefix.size()] == '/';
    return isInside && EndsInSet(topic) && PrefixMistake(topic).empty() &&
           std::count(topic.begin() + static_cast<std::ptrdiff_t>(prefix.size()), topic.end(), '/') == 3;
}

std::optional<VariablePlace> PlantTopics::CommandPlace(std::string_view topic) const {
    auto const found =
        EndsInSet(topic) ? places.find(topic.substr(0, topic.size() - CommandEnd.size())) : places.end();
    if (found == places.end()) {
        return {};
    }
    return found->second;
}

}  // namespace workbench
