#include "SparkplugNames.h"

#include <algorithm>
#include <utility>

#include "Printable.h"
#include "ProjectError.h"
#include "SetRequest.h"
#include "TopicLevel.h"

namespace workbench {

std::string MetricName(std::string_view variableName) {
    std::string name;
    for (std::size_t begin = 0; begin <= variableName.size();) {
        std::size_t const end = std::min(variableName.find('/', begin), variableName.size());
        name += (begin > 0 ? "/" : "") + EscapedLevel(variableName.substr(begin, end - begin));
        if (name.size() > LongestMetricName) {
            return EscapedLevel(variableName);
        }
        begin = end + 1;
    }
    return name;
}

SparkplugNames::SparkplugNames(std::string const& group, std::string const& node,
                               std::deque<BlockConfig> const& projectBlocks)
    : topicStart("spBv1.0/" + EscapedLevel(group) + "/"), nodeEnd("/" + EscapedLevel(node)) {
    std::uint64_t alias = 1;
    for (BlockConfig const& block : projectBlocks) {
        AddBlock(block, alias);
        alias += block.variables.size();
    }
}

void SparkplugNames::AddBlock(BlockConfig const& block, std::uint64_t firstAlias) {
    Device device{EscapedLevel(block.name), firstAlias, {}, {}};
    for (VariableConfig const& variable : block.variables) {
        std::string const name = MetricName(variable.name);
        if (!device.indices.emplace(name, device.metrics.size()).second) {
            throw ProjectError(tools::Quoted(FullName(block, variable)) +
                               ": another variable has the same name in Sparkplug; shorten one of them");
        }
        device.metrics.push_back(name);
    }
    if (!blocks.emplace(device.id, devices.size()).second) {
        throw ProjectError(tools::Quoted(block.name) +
                           ": another block has the same name in Sparkplug; shorten one of them");
    }
    devices.push_back(std::move(device));
}

std::string SparkplugNames::NodeTopic(char const* type) const {
    return topicStart + type + nodeEnd;
}

std::string SparkplugNames::DeviceTopic(char const* type, std::size_t block) const {
    return NodeTopic(type) + "/" + devices[block].id;
}

std::string SparkplugNames::DevicesTopic(char const* type) const {
    return NodeTopic(type) + "/+";
}

std::optional<std::size_t> SparkplugNames::BlockOfTopic(char const* type, std::string const& topic) const {
    std::string const start = NodeTopic(type) + "/";
    if (topic.compare(0, start.size(), start) != 0) {
        return std::nullopt;
    }
    auto const found = blocks.find(topic.substr(start.size()));
    return found == blocks.end() ? std::nullopt : std::optional(found->second);
}

std::optional<VariablePlace> SparkplugNames::Find(std::size_t block, std::optional<std::uint64_t> alias,
                                                  std::string const& name) const {
    Device const& device = devices[block];
    std::size_t variable = device.metrics.size();
    if (alias) {
        bool const isOfBlock =
            *alias >= device.firstAlias && *alias - device.firstAlias < device.metrics.size();
        variable = isOfBlock ? static_cast<std::size_t>(*alias - device.firstAlias) : variable;
    } else if (auto const found = device.indices.find(name); found != device.indices.end()) {
        variable = found->second;
    }
    bool const isKnown =
        variable < device.metrics.size() && (name.empty() || name == device.metrics[variable]);
    return isKnown ? std::optional(VariablePlace{block, variable}) : std::nullopt;
}

}  // namespace workbench
