#pragma once

#include <string>
#include <vector>

#include "DeviceRecord.h"
#include "NetworkCommand.h"
#include "PlantDiscovery.h"

namespace workbench {

// Where a plant is read from: the network, named devices, or a point list.
struct SourceOptions : NetworkOptions {
    std::vector<std::string> from;  // "discover", addresses, or one file
    DiscoverySettings discovery;
    std::vector<std::string> deviceAddresses;  // of a point list: "2001=192.168.1.20"
    std::string addressTable;                  // of a point list: a file
    bool strict = false;
};

// Throws an exception that becomes a mistake on the command line if --from is not one kind of source.
void AddSourceOptions(CLI::App& command, SourceOptions& options);
void CheckSource(SourceOptions const& options);
bool IsPointList(SourceOptions const& options);

struct PlantReading {
    Inventory inventory;
    bool isFromDevices = true;
    bool isWhole = true;  // nothing was ended, stopped answering or could not be used
};

// Reads it; what is missing goes to standard error, one line each. Ctrl-C ends the reading and keeps what was
// read. Throws ProjectError for a mistake in a file, with `strict` also for anything in it that cannot be
// used.
PlantReading ReadPlant(SourceOptions const& options, Streams const& streams);

}  // namespace workbench
