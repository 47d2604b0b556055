#include "AddressArgument.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <vector>

#include "HexText.h"
#include "Printable.h"

namespace workbench {

namespace {

using standard::Endpoint;
using standard::NetworkAddress;
using standard::Octets;
using standard::OctetValue;

constexpr unsigned LastNetwork = 65534;
constexpr std::size_t LongestMac = 255;
constexpr std::string_view Allowed =
    "allowed is ADDRESS[:PORT][,NET:MAC], such as 192.168.1.20, 192.168.1.20:47809 or "
    "192.168.1.1,5:10:20";

[[noreturn]] void Refuse(std::string_view text, std::string const& mistake) {
    throw AddressMistake(tools::Quoted(text) + " " + mistake);
}

// The number of a text of digits only.
std::optional<unsigned> Number(std::string_view text, unsigned limit) {
    bool const isLong = text.size() > 9 || text.find_first_not_of("0123456789") != std::string_view::npos;
    unsigned number = 0;
    if (isLong || std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) {
        return std::nullopt;
    }
    return number <= limit ? std::optional(number) : std::nullopt;
}

// Octets in decimal with a delimiter between them.
std::optional<Octets> DecimalOctets(std::string_view text, char delimiter) {
    Octets octets;
    for (std::size_t from = 0; from <= text.size();) {
        std::size_t const end = std::min(text.find(delimiter, from), text.size());
        auto const octet = Number(text.substr(from, end - from), 255);
        if (!octet) {
            return std::nullopt;
        }
        octets.push_back(static_cast<char>(static_cast<unsigned char>(*octet)));
        from = end + 1;
    }
    return octets;
}

std::uint32_t AddressOf(std::string_view text) {
    auto const octets = DecimalOctets(text, '.');
    if (!octets || octets->size() != 4) {
        Refuse(text, "is not an IPv4 address; " + std::string(Allowed));
    }
    std::uint32_t address = 0;
    for (char const octet : *octets) {
        address = address << 8 | OctetValue(octet);
    }
    return address;
}

std::uint16_t PortOf(std::string_view text) {
    auto const port = Number(text, 65535);
    if (!port || *port == 0) {
        Refuse(text, "is not a port; allowed is 1 to 65535");
    }
    return static_cast<std::uint16_t>(*port);
}

Endpoint EndpointOf(std::string_view text) {
    std::size_t const colon = text.find(':');
    return {AddressOf(text.substr(0, colon)),
            colon == std::string_view::npos ? DefaultPort : PortOf(text.substr(colon + 1))};
}

std::optional<unsigned> HexDigit(char c) {
    unsigned digit = 0;
    return std::from_chars(&c, &c + 1, digit, 16).ec == std::errc() ? std::optional(digit) : std::nullopt;
}

std::optional<Octets> HexOctets(std::string_view digits) {
    Octets octets;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        auto const high = HexDigit(digits[i]);
        auto const low = HexDigit(digits[i + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        octets.push_back(static_cast<char>(static_cast<unsigned char>(*high << 4 | *low)));
    }
    bool const isGood = !octets.empty() && octets.size() <= LongestMac && digits.size() % 2 == 0;
    return isGood ? std::optional(octets) : std::nullopt;
}

Octets MacOfEndpoint(Endpoint const& endpoint) {
    Octets mac;
    for (int const shift : {24, 16, 8, 0}) {
        mac.push_back(static_cast<char>(static_cast<unsigned char>(endpoint.address >> shift)));
    }
    mac.push_back(static_cast<char>(static_cast<unsigned char>(endpoint.port >> 8)));
    mac.push_back(static_cast<char>(static_cast<unsigned char>(endpoint.port)));
    return mac;
}

Octets MacOf(std::string_view text) {
    if (text.find('.') != std::string_view::npos) {
        return MacOfEndpoint(EndpointOf(text));
    }
    bool const isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    auto const octets = isHex ? HexOctets(text.substr(2)) : DecimalOctets(text, ':');
    if (!octets || (!isHex && octets->size() > 2)) {
        Refuse(text,
               "is not a MAC address; allowed is one octet such as 7, two such as 10:20, an address such as "
               "10.0.0.7:47808, or hexadecimal octets such as 0x0A14");
    }
    return *octets;
}

NetworkAddress RemoteOf(std::string_view text) {
    std::size_t const colon = text.find(':');
    if (colon == std::string_view::npos) {
        Refuse(text, "is not a station behind a router; allowed is NET:MAC, such as 5:10:20");
    }
    auto const network = Number(text.substr(0, colon), LastNetwork);
    if (!network || *network == 0) {
        Refuse(text.substr(0, colon), "is not a network number; allowed is 1 to 65534");
    }
    return {static_cast<std::uint16_t>(*network), MacOf(text.substr(colon + 1))};
}

}  // namespace

standard::Peer ParseAddress(std::string_view text) {
    std::size_t const comma = text.find(',');
    standard::Peer peer{EndpointOf(text.substr(0, comma)), std::nullopt};
    if (comma != std::string_view::npos) {
        peer.remote = RemoteOf(text.substr(comma + 1));
    }
    return peer;
}

standard::Endpoint ParseEndpoint(std::string_view text) {
    if (text.find(',') != std::string_view::npos) {
        Refuse(text, "is not an address of this network; allowed is ADDRESS[:PORT], such as 192.168.1.20");
    }
    return EndpointOf(text);
}

std::string AddressText(standard::Peer const& peer) {
    std::string text = peer.endpoint.Text();
    if (peer.remote) {
        text += "," + std::to_string(peer.remote->network) + ":" + MacText(peer.remote->mac);
    }
    return text;
}

std::string MacText(Octets const& mac) {
    if (mac.empty()) {
        return {};
    }
    if (mac.size() <= 2) {
        std::string const first = std::to_string(OctetValue(mac[0]));
        return mac.size() == 1 ? first : first + ":" + std::to_string(OctetValue(mac[1]));
    }
    Endpoint endpoint;
    if (mac.size() == 6) {
        for (std::size_t i = 0; i < 4; ++i) {
            endpoint.address = endpoint.address << 8 | OctetValue(mac[i]);
        }
        endpoint.port = static_cast<std::uint16_t>(OctetValue(mac[4]) << 8 | OctetValue(mac[5]));
    }
    // An address with port 0 is not one of BACnet/IP.
    return endpoint.port != 0 ? endpoint.Text() : "0x" + tools::HexText(mac, tools::HexDigits::Upper);
}

}  // namespace workbench
