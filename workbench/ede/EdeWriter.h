#pragma once

#include <string>
#include <vector>

#include "EdeImport.h"

namespace workbench {

// The four files of a point list as octets, in layout 2.3: fields separated by ";", lines ended by CR LF. A
// file with characters beyond ASCII is UTF-8 with a byte order mark.
struct EdeTexts {
    std::string ede;
    std::string stateTexts;
    std::string units;
    std::string objectTypes;
    // What the files do not have of the plant, one sentence each.
    std::vector<std::string> notes;
};

// Rows by device, its Device object first, then by object type and instance. The layout of the heading is
// ignored: it is 2.3. The same plant and heading give the same files. What is read from them gives the same
// files again.
//
// The columns are those of EdeImport. A plant read from its devices has no keynames: they are the objects'
// names, with the instance of the device in front where the plant has the name twice. Columns of other lists
// are not written. Control characters become blanks.
EdeTexts WriteEde(Inventory const& inventory, EdeHeading const& heading);

// The paths of the files, in the order of EdeTexts: those of "plant", "plant.csv" and "plant_EDE.csv" begin
// with "plant".
std::vector<std::string> EdePaths(std::string const& name);

// Writes the files, all of them or none. Throws ProjectError if one exists and mayReplace is false, and
// std::runtime_error if one cannot be written.
void SaveEde(EdeTexts const& texts, std::string const& name, bool mayReplace);

}  // namespace workbench
