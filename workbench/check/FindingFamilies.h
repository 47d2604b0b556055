#pragma once

#include <deque>
#include <vector>

#include "Finding.h"
#include "Project.h"

namespace workbench {

// What is wrong with a project that has no mistakes, or will surprise its author: one function for each
// family of findings. Blocks with mistakes may lack fields and variables.

using Blocks = std::deque<BlockConfig>;

// Objects and properties that the driver cannot read.
void FindDecoding(BlockConfig const& block, Findings& findings);
// Values that do not fit the declared type.
void FindConversions(BlockConfig const& block, Findings& findings);
// Writes that go elsewhere, change the value or are refused.
void FindWrites(BlockConfig const& block, Findings& findings);
// The fields of a block.
void FindFields(BlockConfig const& block, Findings& findings);
// Units and state texts that are not shown, or not as meant.
void FindShown(BlockConfig const& block, Findings& findings);
// The same thing twice: properties, objects of a device, names.
void FindDuplicates(Blocks const& blocks, Findings& findings);
void FindSimilarNames(std::vector<TaskConfig> const& tasks, Blocks const& blocks, Findings& findings);
// Blocks that wait for one another, and periods that are too short.
void FindTaskLoads(std::vector<TaskConfig> const& tasks, Blocks const& blocks, Findings& findings);

}  // namespace workbench
