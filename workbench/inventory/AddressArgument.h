#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "Peer.h"

namespace workbench {

// The address of a device as people type it: "ADDRESS[:PORT][,NET:MAC]", such as "192.168.1.20",
// "192.168.1.20:47809" and, for a station behind a router, "192.168.1.1,5:10:20". The port is 47808 by
// default. MAC has one decimal octet ("7"), two ("10:20"), six as "10.0.0.7:47808", or any number of octets
// in hexadecimal ("0x0A14"), at most 255.

constexpr std::uint16_t DefaultPort = 47808;

// What is wrong with a text, in quotes, and what is allowed.
class AddressMistake : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

// Throws AddressMistake.
standard::Peer ParseAddress(std::string_view text);
// The same without NET:MAC, which is a mistake.
standard::Endpoint ParseEndpoint(std::string_view text);

// The text that ParseAddress reads as this peer, always with the port: "192.168.1.1:47808,5:10:20". All
// stations of a network, which is not an address of a device, are "192.168.1.1:47808,5:".
std::string AddressText(standard::Peer const& peer);
// The MAC alone: "7", "10:20", "10.0.0.7:47808", "0x0A141E".
std::string MacText(standard::Octets const& mac);

}  // namespace workbench
