#pragma once

#include <string>
#include <string_view>

namespace workbench {

// Checks of the address texts of a block. They are stricter than the driver, which truncates numbers that are
// too large and then uses another address than the intended one.

// Empty for an IPv4 address with a port from 1 to 65535, such as "192.168.1.20:47808"; otherwise what is
// wrong.
std::string MistakeInPeer(std::string_view text);

// Empty for a device address: an IPv4 address with or without a port, a device number from 0 to 4194301, two
// octets in decimal such as "10:20", or the empty text, which addresses every device of a remote network.
// Otherwise what is wrong.
std::string MistakeInDeviceAddress(std::string_view text);

}  // namespace workbench
