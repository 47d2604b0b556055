#pragma once

#include <string>

namespace workbench {

struct BrokerAddress {
    std::string host;  // a name, an IPv4 address, or an IPv6 address without brackets
    unsigned short port = 1883;
    bool isTls = false;
};

// Reads mqtt://HOST[:PORT], with port 1883 by default, and mqtts://HOST[:PORT] for TLS, with 8883. An IPv6
// address is in brackets. std::runtime_error with what is wrong and what to do; the message of an address
// with a user or a password in it quotes nothing.
BrokerAddress ReadBrokerAddress(std::string const& text);

// "broker.example:8883", "[::1]:1883".
std::string AddressText(BrokerAddress const& address);

}  // namespace workbench
