#include "NetworkMessages.h"

#include "OctetReader.h"
#include "OctetWriter.h"

namespace standard {

namespace {

enum class Type : std::uint8_t {
    WhoIsRouterToNetwork = 0x00,
    IAmRouterToNetwork = 0x01,
    RejectMessageToNetwork = 0x03,
    WhatIsNetworkNumber = 0x12,
    NetworkNumberIs = 0x13
};

// The parameters, if the message is of that type and has as many octets of them.
std::optional<OctetReader> Parameters(Octets const& content, Type type, std::size_t count) {
    bool const isMeant =
        content.size() == count + 1 && OctetValue(content[0]) == static_cast<std::uint8_t>(type);
    return isMeant ? std::optional<OctetReader>(std::in_place, content, 1) : std::nullopt;
}

OctetWriter Message(Type type) {
    OctetWriter writer;
    writer.U8(static_cast<std::uint8_t>(type));
    return writer;
}

}  // namespace

std::optional<WhoIsRouterToNetwork> WhoIsRouterToNetwork::Decode(Octets const& content) {
    if (Parameters(content, Type::WhoIsRouterToNetwork, 0)) {
        return WhoIsRouterToNetwork();
    }
    auto parameters = Parameters(content, Type::WhoIsRouterToNetwork, 2);
    return parameters ? std::optional<WhoIsRouterToNetwork>({parameters->U16()}) : std::nullopt;
}

Octets WhoIsRouterToNetwork::Encode() const {
    OctetWriter writer = Message(Type::WhoIsRouterToNetwork);
    if (network) {
        writer.U16(*network);
    }
    return writer.Take();
}

std::optional<IAmRouterToNetwork> IAmRouterToNetwork::Decode(Octets const& content) {
    std::size_t const octets = content.empty() ? 0 : content.size() - 1;
    auto parameters = Parameters(content, Type::IAmRouterToNetwork, octets / 2 * 2);
    if (!parameters) {
        return std::nullopt;
    }
    IAmRouterToNetwork message;
    while (!parameters->AtEnd()) {
        message.networks.push_back(parameters->U16());
    }
    return message;
}

Octets IAmRouterToNetwork::Encode() const {
    OctetWriter writer = Message(Type::IAmRouterToNetwork);
    for (std::uint16_t const network : networks) {
        writer.U16(network);
    }
    return writer.Take();
}

std::optional<RejectMessageToNetwork> RejectMessageToNetwork::Decode(Octets const& content) {
    auto parameters = Parameters(content, Type::RejectMessageToNetwork, 3);
    if (!parameters) {
        return std::nullopt;
    }
    std::uint8_t const reason = parameters->U8();
    return RejectMessageToNetwork{reason, parameters->U16()};
}

Octets RejectMessageToNetwork::Encode() const {
    OctetWriter writer = Message(Type::RejectMessageToNetwork);
    writer.U8(reason);
    writer.U16(network);
    return writer.Take();
}

std::string RouterRejectText(unsigned reason) {
    constexpr unsigned known = 7;
    static char const* const texts[known] = {"other error",
                                             "no route to the network",
                                             "the router is busy",
                                             "unknown network message",
                                             "the message is too long",
                                             "authentication is required",
                                             "the address is not valid"};
    return reason < known ? texts[reason] : "reason " + std::to_string(reason);
}

std::optional<WhatIsNetworkNumber> WhatIsNetworkNumber::Decode(Octets const& content) {
    return Parameters(content, Type::WhatIsNetworkNumber, 0)
               ? std::optional<WhatIsNetworkNumber>(std::in_place)
               : std::nullopt;
}

Octets WhatIsNetworkNumber::Encode() const {
    return Message(Type::WhatIsNetworkNumber).Take();
}

std::optional<NetworkNumberIs> NetworkNumberIs::Decode(Octets const& content) {
    auto parameters = Parameters(content, Type::NetworkNumberIs, 3);
    if (!parameters) {
        return std::nullopt;
    }
    std::uint16_t const network = parameters->U16();
    std::uint8_t const flag = parameters->U8();
    return flag <= 1 ? std::optional<NetworkNumberIs>({network, flag == 1}) : std::nullopt;
}

Octets NetworkNumberIs::Encode() const {
    OctetWriter writer = Message(Type::NetworkNumberIs);
    writer.U16(network);
    writer.U8(isConfigured ? 1 : 0);
    return writer.Take();
}

}  // namespace standard
