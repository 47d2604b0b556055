#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Project.h"
#include "ValueChanges.h"

namespace workbench {

// The name of a variable as that of a metric: its parts between "/" are each as EscapedLevel (TopicLevel.h)
// has it, so that a host shows them as folders. A name that has more than LongestMetricName octets then is
// one level, cut as there.
constexpr std::size_t LongestMetricName = 400;
std::string MetricName(std::string_view variableName);

// What identifies the blocks and variables of a project in Sparkplug B: topics, device ids, names and
// aliases. It does not change.
class SparkplugNames {
public:
    // The metric by which a host asks for all births.
    static constexpr char Rebirth[] = "Node Control/Rebirth";

    // ProjectError if two blocks have the same id, or two variables of a block the same metric name; only
    // names that are cut can have. The blocks must outlive the names.
    SparkplugNames(std::string const& group, std::string const& node,
                   std::deque<BlockConfig> const& projectBlocks);

    // "spBv1.0/GROUP/NBIRTH/NODE", "spBv1.0/GROUP/DBIRTH/NODE/DEVICE".
    std::string NodeTopic(char const* type) const;
    std::string DeviceTopic(char const* type, std::size_t block) const;
    // A filter for the topics of all devices.
    std::string DevicesTopic(char const* type) const;
    // The block that a command for a device is for; none if the topic is not of that type, or no block has
    // the device's id.
    std::optional<std::size_t> BlockOfTopic(char const* type, std::string const& topic) const;

    // The names of the metrics of a block, in the order of its variables.
    std::vector<std::string> const& MetricNames(std::size_t block) const { return devices[block].metrics; }
    // From 1, without a gap over all variables of the project.
    std::uint64_t Alias(VariablePlace place) const {
        return devices[place.block].firstAlias + place.variable;
    }
    // The variable of the block with that alias or, without one, with that name. None if the block does not
    // have it, or if alias and name are those of two variables.
    std::optional<VariablePlace> Find(std::size_t block, std::optional<std::uint64_t> alias,
                                      std::string const& name) const;

private:
    void AddBlock(BlockConfig const& block, std::uint64_t firstAlias);

    struct Device {
        std::string id;
        std::uint64_t firstAlias = 0;
        std::vector<std::string> metrics;
        std::unordered_map<std::string, std::size_t> indices;  // by name
    };

    std::string topicStart;  // "spBv1.0/GROUP/"
    std::string nodeEnd;     // "/NODE"
    std::vector<Device> devices;
    std::unordered_map<std::string, std::size_t> blocks;  // by device id
};

}  // namespace workbench
