#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Datum.h"
#include "ObjectId.h"
#include "Project.h"
#include "PropertyServices.h"

namespace workbench {

// What the device has answered for a variable. Variables of an object share the answer.
struct PointState {
    using Values = std::vector<standard::Datum>;

    bool isFresh = false;  // in the current cycle
    // Of the latest answer without an error; null before it, and for a variable that cannot be written.
    std::shared_ptr<Values const> values;
    // The latest answer is an error: "device: unknown-object".
    std::string suspect;
};

// What the driver has sent for a variable, and how the device has answered.
struct PointWrite {
    std::vector<standard::Datum> values;  // as they were sent
    bool isAcknowledged = false;
    std::string failure;  // Error, Reject or Abort in words: "property: write-access-denied"
    bool isAborted = false;
    std::uint32_t property = 0;     // to which it was sent
    unsigned long long number = 0;  // of the request, in its block; 0: none has been sent
};

// The variables of a block by object and property, with what the device answers for each. Memory is bounded
// by the variables and the length of an answer.
class PointTable {
public:
    // The configuration must outlive the table.
    explicit PointTable(BlockConfig const& blockConfig);

    // Null if the block has no variable on that object.
    VariableConfig const* AnyOf(standard::ObjectId const& object) const;
    // The only variable on that object, null if there are none or several.
    VariableConfig const* OnlyOf(standard::ObjectId const& object) const;

    // True if the block has a variable on that property.
    bool Has(standard::ObjectId const& object, std::uint32_t property) const;

    void BeginCycle();
    // Keeps each result for all variables on its property.
    void Keep(std::vector<standard::ReadResult> results);

    PointState const& StateOf(VariableConfig const& variable) const { return states[IndexOf(variable)]; }
    PointWrite& WriteOf(VariableConfig const& variable) { return writes[IndexOf(variable)]; }
    PointWrite const& WriteOf(VariableConfig const& variable) const { return writes[IndexOf(variable)]; }

private:
    // A property of an object, and the index of a variable on it.
    using Point = std::pair<std::uint32_t, std::size_t>;
    using Points = std::vector<Point>;

    std::size_t IndexOf(VariableConfig const& variable) const;
    void KeepFor(std::size_t index, standard::ReadResult const& result,
                 std::shared_ptr<std::vector<standard::ReadResult> const> const& owner);

    BlockConfig const& block;
    std::map<standard::ObjectId, Points> objects;  // each in order of the properties
    std::vector<PointState> states;
    std::vector<PointWrite> writes;
};

}  // namespace workbench
