#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "BrowsePlant.h"
#include "ImportReport.h"
#include "NetworkCommand.h"

namespace workbench {

// What the commands have in common that make something of the objects of devices or of a point list.

// Adds a device unless its address is among the targets.
void AddTarget(std::vector<BrowseTarget>& targets, BrowseTarget const& target);
// The devices of addresses, each once. Throws AddressMistake.
std::vector<BrowseTarget> TargetsOf(std::vector<std::string> const& addresses);

struct DevicesRead {
    Inventory inventory;
    bool isWhole = true;  // nothing was ended or stopped answering
};

// Reads all of these devices, with a line of progress. What a user has to know of them goes to `err`, a line
// each. Ctrl-C ends the reading and keeps what was read.
DevicesRead ReadDevices(NetworkCommand& network, std::vector<BrowseTarget> const& targets, std::ostream& err);

// Whether a source is a file with a point list, by its ending.
bool IsPointListFile(std::string const& source);
// Throws ProjectError if the list of this file could not be used whole.
void ExpectWhole(ImportReport const& report, std::string const& path);

}  // namespace workbench
