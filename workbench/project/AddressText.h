#pragma once

#include <string>
#include <string_view>

namespace workbench {

// The address texts of a block, held against what the driver makes of them. These checks are stricter than
// the driver, which cuts numbers that are too large and goes on with another address than the one that was
// meant.

// "" when the text is an IPv4 address with a port from 1 to 65535, such as "192.168.1.20:47808"; else what is
// wrong.
std::string MistakeInPeer(std::string_view text);

// "" when the text is one of the forms of a device address: an IPv4 address with or without a port, a device
// number from 0 to 4194301, two octets in decimal, such as "10:20", or nothing at all, which means every
// device of a remote network; else what is wrong.
std::string MistakeInDeviceAddress(std::string_view text);

}  // namespace workbench
