#pragma once

#include <string>
#include <vector>

#include "Judge.h"
#include "ObjectId.h"
#include "Project.h"

namespace workbench {

// The points of one object of a block, by their indices among the block's variables.
struct ObjectPoints {
    standard::ObjectId object;
    std::vector<std::size_t> points;
};

// In the order in which the driver polls them: by object type and number.
std::vector<ObjectPoints> PolledObjects(BlockConfig const& block);

// What is known of each variable of the block without reading it, from the driver's support table.
std::vector<PointFacts> FactsOf(BlockConfig const& block, long long localDiff);

}  // namespace workbench
