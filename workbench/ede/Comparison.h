#pragma once

#include <string>
#include <vector>

#include "DeviceRecord.h"

namespace workbench {

// A difference between a point list and what it is compared with, a plant or a project.
struct Difference {
    enum class Kind {
        MissingDevice,     // it is in the list alone
        AdditionalDevice,  // it is in the plant alone
        MissingObject,
        AdditionalObject,
        Name,
        Unit,
        StateTexts
    };

    Kind kind;
    std::uint32_t device = 0;
    std::optional<standard::ObjectId> object;  // none for a device
    std::string name;                          // of the object or device: that of the list, if it is there
    std::string listed;                        // the name, unit or state texts of the list; empty without
    std::string actual;                        // those of the plant
};

struct Comparison {
    std::vector<Difference> differences;  // by device and object
    std::size_t devices = 0;              // in both
    std::size_t objects = 0;              // in both
    // What could not be compared, one sentence each: objects that were not read to their end.
    std::vector<std::string> notes;
};

// Whether names of Device objects are compared: a project has names of blocks in their place.
enum class DeviceNames { Compare, Ignore };

// Compares by device instance, object type and object instance. A unit or texts that only the plant has are
// no difference if the list has none for the object: many lists leave them out. An object whose properties
// could not be read is compared by its existence. Schedules, trend logs and other objects that a list does
// not have are additional objects too.
Comparison Compare(Inventory const& list, Inventory const& plant, DeviceNames names);

// "device 2001 analog-input 1 "Supply air": the unit is "degrees-celsius" in the list and "kelvins" in the
// plant"
std::string DifferenceText(Difference const& difference);
// All differences, notes and the counts, each on a line.
std::string ComparisonText(Comparison const& comparison);
// An object for each difference and one with the counts, each on a line.
std::string ComparisonJson(Comparison const& comparison);

}  // namespace workbench
