// The texts of a block's address and MAC: as the driver parses them, and as the workbench checks them.
#include <netinet/in.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <stdexcept>
#include <string>

#include "AddressText.h"
#include "Exceptions.h"
#include "Network/AddressParser.h"
#include "Octets.h"
#include "QuietWorld.h"
#include "Require.h"
#include "TBACnet.h"
#include "VmacAddress.h"

using fuzz::Require;
using Network::AddressParser;

namespace {

// The result of parsing a text.
struct Parsed {
    bool accepted = false;
    Octets octets;
};

Parsed ParseAddress(std::string const& text) {
    try {
        return {true, AddressParser::ParseAddress(text)};
    } catch (ParseException const&) {
    } catch (std::runtime_error const& failure) {
        Require(std::string(failure.what()) == "unknown error",
                "a text that is not an address ends in one of two exceptions");
    }
    return {};
}

// The number in a text that is known to consist of digits.
unsigned Number(std::string const& digits) {
    return std::accumulate(digits.begin(), digits.end(), 0u, [](unsigned number, char digit) {
        return number * 10 + static_cast<unsigned>(digit - '0');
    });
}

Octets BigEndian(unsigned number, int width) {
    Octets octets;
    for (int shift = (width - 1) * 8; shift >= 0; shift -= 8) {
        octets.push_back(static_cast<char>(number >> shift));
    }
    return octets;
}

// The octets meant by a text that the workbench accepts.
Octets Meant(std::string const& text) {
    std::size_t const colon = text.find(':');
    std::string const head = text.substr(0, colon);
    if (text.find('.') != std::string::npos) {
        Octets octets;
        for (std::size_t start = 0; start <= head.size();) {
            std::size_t const end = std::min(head.find('.', start), head.size());
            octets.push_back(static_cast<char>(Number(head.substr(start, end - start))));
            start = end + 1;
        }
        Octets const port = BigEndian(colon == std::string::npos ? 47808 : Number(text.substr(colon + 1)), 2);
        octets.insert(octets.end(), port.begin(), port.end());
        return octets;
    }
    if (colon != std::string::npos) {
        return {static_cast<char>(Number(head)), static_cast<char>(Number(text.substr(colon + 1)))};
    }
    unsigned const number = Number(head);
    if (text.empty() || number < 256) {
        return text.empty() ? Octets() : BigEndian(number, 1);
    }
    return {
        static_cast<char>(number), static_cast<char>(number >> 8), static_cast<char>(number >> 16), 0, 0, 0};
}

void RequireWorkbenchAgrees(std::string const& text, Parsed const& parsed) {
    bool const isPeer = workbench::MistakeInPeer(text).empty();
    std::string const mistake = workbench::MistakeInDeviceAddress(text);
    Require(!isPeer || mistake.empty(), "a peer is a device address");
    if (mistake.empty()) {
        Require(parsed.accepted, "the driver accepts what the workbench accepts");
        Require(parsed.octets == Meant(text), "the driver reads the octets that the text means");
        Require(!isPeer || parsed.octets.size() == 6, "a peer has six octets");
    } else {
        Require(mistake.size() < 2 * text.size() + 200, "a message is in proportion to its text");
    }
}

void RequireVmac(Octets const& octets) {
    VmacAddress address(octets, false);
    Octets full = octets;
    full.resize(std::max<std::size_t>(full.size(), 6));
    Octets const head(full.begin(), full.begin() + 6);
    Octets fields = BigEndian(address.GetAddress(), 4);
    Octets const port = BigEndian(address.GetPort(), 2);
    fields.insert(fields.end(), port.begin(), port.end());
    Require(fields == head, "missing octets count as zero");
    address.SetPort(address.GetPort());
    address.SetAddress(address.GetAddress());
    Require(address.GetBytes() == full, "setting what is there changes nothing else");
}

void RequireSplit(std::string const& text, char delimiter) {
    std::string joined;
    for (std::string const& part : AddressParser::Split(text, delimiter)) {
        Require(part.find(delimiter) == std::string::npos, "no part has a delimiter");
        joined += part + delimiter;
    }
    bool const ended = !text.empty() && text.back() == delimiter;
    Require(joined == (ended || text.empty() ? text : text + delimiter), "the parts make up the text");
}

void RequireIpAndPort(std::string const& text) {
    try {
        Require(AddressParser::ParseIp(text).size() == 4, "an IPv4 address has four octets");
    } catch (std::runtime_error const&) {
    } catch (std::logic_error const&) {
    }
    try {
        AddressParser::ParsePort(text);
    } catch (std::logic_error const& failure) {
        Require(std::string(failure.what()) == "stoul", "a text that is not a port ends in one exception");
    }
}

// A client is created exactly when the texts that its network needs are addresses.
void RequireClient(std::string const& address, std::string const& mac, int network) {
    NLSocket socket;
    NLInitSocket(&socket);
    dorvel::BACnet::TBACnet const client(socket, new sockaddr_in(), 1, address, mac, 250, 1, 1, network, 8);
    bool const expected = ParseAddress(mac).accepted && (network == 0 || ParseAddress(address).accepted);
    Require(client.IsCreated() == expected, "a client is created exactly when its texts are addresses");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static bool const entered = (fuzz::QuietWorld::Enter(), true);
    Require(entered, "the host environment is set");
    std::string const text(data, data + size);
    Parsed const parsed = ParseAddress(text);
    RequireWorkbenchAgrees(text, parsed);
    RequireVmac(parsed.octets);
    RequireSplit(text, ':');
    RequireSplit(text, '.');
    RequireIpAndPort(text);
    // Two texts with a line end between them.
    std::size_t const line = text.find('\n');
    if (line != std::string::npos) {
        RequireClient(text.substr(0, line), text.substr(line + 1), static_cast<int>(size % 2));
    }
    return 0;
}
