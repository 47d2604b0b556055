#pragma once

#include <string>
#include <vector>

#include "DeviceBrowser.h"
#include "DeviceRecord.h"
#include "TextStyle.h"

namespace workbench {

// What was read of devices, in the three forms of the command browse. All texts of devices are shown
// printable.

// For each device a heading, its notes and a table of its objects.
std::string BrowseText(std::vector<DeviceRecord> const& devices, TextStyle const& style);
// A heading, then a line for each object, with tabs between the columns.
std::string BrowseLines(std::vector<DeviceRecord> const& devices);
// An object a line: {"kind":"device",...}, then {"kind":"object",...} for each object.
std::string BrowseJson(std::vector<DeviceRecord> const& devices);

// All properties of one object, a line each; the priority array and schedules with a line for each level, day
// and event.
std::string OneObjectText(DeviceRecord const& device, DeviceBrowser::OneObject const& one,
                          TextStyle const& style);
std::string OneObjectLines(DeviceRecord const& device, DeviceBrowser::OneObject const& one);
// {"kind":"property",...} a line.
std::string OneObjectJson(DeviceRecord const& device, DeviceBrowser::OneObject const& one);

// Notes of a device in one line each, for standard error: "192.168.1.20:47808: it does not answer".
std::vector<std::string> NotesOf(DeviceRecord const& device);

}  // namespace workbench
