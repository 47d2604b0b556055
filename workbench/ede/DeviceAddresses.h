#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "DeviceRecord.h"
#include "ImportReport.h"

namespace workbench {

// The addresses of devices, by instance.
using AddressTable = std::map<std::uint32_t, standard::Peer>;

// Adds "2001=192.168.1.20" or "2001=192.168.1.1:47808,5:10:20". Throws ProjectError if it is not of that
// form, or if the instance has another address already.
void AddDeviceAddress(AddressTable& table, std::string const& text);

// Reads a file with an instance and an address on each line, with blanks, a tab, a ";", a "," or a "="
// between them. Empty lines, lines that begin with "#", and a first line without a number are skipped. Throws
// ProjectError with file and line.
AddressTable ReadAddressTable(std::string const& path);

// Gives the devices without an address that of the table, and adds a line to the report for each device that
// has none afterwards. An address without a device is not reported: a table may serve many lists.
void Resolve(Inventory& inventory, AddressTable const& table, ImportReport& report);

}  // namespace workbench
