#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "DriverFacts.h"
#include "Finding.h"
#include "Project.h"

namespace workbench {

// A block as the driver sees it, for the findings.

// The value of a field that the project sets; null if it does not.
BlockConfig::FieldValue const* FieldOf(BlockConfig const& block, std::string_view name);
long long NumberOf(BlockConfig const& block, std::string_view name, long long byDefault);
std::string TextOf(BlockConfig const& block, std::string_view name);

// Milliseconds for which a silent device holds the task in a cycle.
long long SilenceOf(BlockConfig const& block);

// The variables of a block by object type and number, in the order of the poll.
using Object = std::pair<ObjectTypeEnum, int>;
std::map<Object, std::vector<VariableConfig const*>> ObjectsOf(BlockConfig const& block);

// The device of a block: where datagrams go, its network, and its address there. Empty if a
// mistake in the block leaves it open.
using Device = std::tuple<std::vector<char>, long long, std::vector<char>>;
Device DeviceOf(BlockConfig const& block);
bool IsKnown(Device const& device);

Finding OfBlock(FindingCode code, BlockConfig const& block, char const* field, std::string const& message,
                std::string const& advice = {});
Finding OfVariable(FindingCode code, BlockConfig const& block, VariableConfig const& variable,
                   char const* field, std::string const& message, std::string const& advice = {});

// "units", or "property 128" for a property that projects cannot name.
std::string NameOf(PropertyIdentifierEnum property);
// "a", "b" and 3 more.
std::string Listed(std::vector<std::string> const& names);
// "3 s", "0.25 s".
std::string Seconds(long long milliseconds);
// "1 object", "2 objects".
std::string Counted(std::size_t count, char const* noun);

}  // namespace workbench
