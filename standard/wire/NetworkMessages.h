#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OctetVector.h"

// Network layer messages about routers and network numbers (clause 6.4), as the content of an Npdu whose
// isNetworkMessage is set: the message type and its parameters. Decode has no value if the content is another
// message or if its parameters are not those of the message; it never throws.
namespace standard {

struct WhoIsRouterToNetwork {
    std::optional<std::uint16_t> network;  // without it, routers to any network are meant

    static std::optional<WhoIsRouterToNetwork> Decode(Octets const& content);
    Octets Encode() const;
};

struct IAmRouterToNetwork {
    std::vector<std::uint16_t> networks;

    static std::optional<IAmRouterToNetwork> Decode(Octets const& content);
    Octets Encode() const;
};

struct RejectMessageToNetwork {
    std::uint8_t reason = 0;
    std::uint16_t network = 0;

    static std::optional<RejectMessageToNetwork> Decode(Octets const& content);
    Octets Encode() const;
};

// The reason of a Reject-Message-To-Network in words (clause 6.4.4), or "reason 9".
std::string RouterRejectText(unsigned reason);

struct WhatIsNetworkNumber {
    static std::optional<WhatIsNetworkNumber> Decode(Octets const& content);
    Octets Encode() const;
};

struct NetworkNumberIs {
    std::uint16_t network = 0;
    bool isConfigured = false;  // otherwise it was learned from another device

    static std::optional<NetworkNumberIs> Decode(Octets const& content);
    Octets Encode() const;
};

}  // namespace standard
