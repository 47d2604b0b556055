#pragma once

#include <optional>
#include <string>

#include "DeviceRecord.h"
#include "ImportReport.h"

namespace workbench {

// The heading rows of an EDE file, as it has them.
struct EdeHeading {
    std::string projectName;
    std::string fileVersion;  // VERSION_OF_REFERENCEFILE
    std::string timestamp;    // TIMESTAMP_OF_LAST_CHANGE
    std::string author;       // AUTHOR_OF_LAST_CHANGE
    std::string layout;       // VERSION_OF_LAYOUT, such as "2.3"
};

// One of the files: its name in messages, and its octets.
struct EdeFile {
    std::string name;
    std::string content;
};

// The files of a point list. Only the first is needed.
struct EdeFiles {
    EdeFile ede;
    std::optional<EdeFile> stateTexts;
    std::optional<EdeFile> units;
    std::optional<EdeFile> objectTypes;
};

// A plant from a point list (docs/ede.md). The devices have no addresses (DeviceAddresses.h).
//
// Each object has those properties that its row gives: Object_Name, Description, Relinquish_Default,
// Min_Pres_Value and Max_Pres_Value, High_Limit and Low_Limit, Units, State_Text with Number_Of_States or
// Inactive_Text and Active_Text, Notification_Class. A column that no property of the object's type has, or
// whose value is not of the property's datatype, is in ObjectRecord::listed, by the heading of layout 2.3:
// "keyname", "settable" ("Y" or "N"), "supports COV" ("Y" or "N"), "vendor-specific-address",
// "present-value-default", "unit-code" and so on.
struct EdeImport {
    Inventory inventory;
    ImportReport report;
    EdeHeading heading;
};

// Never throws for what the files have: what cannot be used is in the report. Work is linear in their size.
EdeImport ReadEde(EdeFiles const& files);

// Reads the file and those beside it: NAME_EDE.csv, NAME_StateTexts.csv, NAME_Units.csv, NAME_ObjTypes.csv.
// Letter case, and "-", "_" and blanks between the words, do not matter. Throws ProjectError if the file
// cannot be read or nothing in it is a point list.
EdeImport ImportEde(std::string const& path);

}  // namespace workbench
