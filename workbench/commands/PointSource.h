#pragma once

#include <string>
#include <vector>

#include "CommonOptions.h"
#include "EdeImport.h"
#include "NetworkCommand.h"
#include "Streams.h"

namespace workbench {

// Where points come from: a project, a point list, or devices.
struct PointSourceOptions : NetworkOptions {
    std::vector<std::string> sources;  // PROJECT.lua, FILE_EDE.csv, or addresses
    Params params;                     // of a project
    bool strict = false;
};

void AddPointSourceOptions(CLI::App& command, PointSourceOptions& options, char const* description);
// Throws an exception that becomes a mistake on the command line if the sources are not of one kind.
void CheckPointSource(PointSourceOptions const& options);

bool IsProjectFile(std::string const& source);

struct PointPlant {
    Inventory inventory;
    EdeHeading heading;   // of a point list
    bool isWhole = true;  // nothing was ended, stopped answering or could not be used
};

// Reads the points. What is missing goes to standard error, a line each. Ctrl-C ends the reading and keeps
// what was read. Throws ProjectError for a mistake in a file, with `strict` also for anything that a list
// does not bring in.
PointPlant ReadPoints(PointSourceOptions const& options, Streams const& streams);
// The same of one list.
PointPlant ReadPointList(std::string const& path, bool strict, Streams const& streams);

}  // namespace workbench
