#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DeviceRecord.h"

namespace workbench {

struct ProjectStyle {
    // What the devices answered; otherwise a point list, which has no values.
    bool isFromDevices = true;
    // Variables of objects that the driver can write and whose devices let them be written get Write = true.
    bool isWritable = false;
    // The reading was ended, or a device stopped answering: the file says so first.
    bool isPartial = false;
    // Without descriptions and what only point lists use, for a plant whose project would otherwise be too
    // large.
    bool isBrief = false;
};

struct ProjectText {
    std::string text;  // a Lua source; the same inventory gives the same
    std::size_t blocks = 0;
    std::size_t variables = 0;
    std::size_t written = 0;   // with Write = true
    std::size_t comments = 0;  // objects that are not read
    // One line for each device that has no block: "device 2001 "Chiller": its address is not known".
    std::vector<std::string> leftOut;
    // Whether the workbench loads it: a file has at most 16 MB and a table of it 500,000 values.
    bool isLoadable = true;
};

// A project with a block and a task for each device, and a variable for each object that the driver can read.
// Other objects are comments with the reason. Without a device that can be polled it has no block, and cannot
// be run.
ProjectText WriteProject(Inventory const& inventory, ProjectStyle const& options);

}  // namespace workbench
