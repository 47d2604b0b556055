#include "BlockAddress.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "HexText.h"

namespace workbench {

namespace {

constexpr char DefaultMac[] = "255.255.255.255:47808";
constexpr unsigned short DefaultPort = 47808;

template <class Value>
Value const* Field(BlockConfig const& block, char const* name) {
    for (auto const& field : block.fields) {
        if (field.first == name) {
            return std::get_if<Value>(&field.second);
        }
    }
    return nullptr;
}

// The decimal numbers of a text, whatever separates them.
std::vector<unsigned long> Numbers(std::string const& text) {
    std::vector<unsigned long> numbers;
    for (char const* at = text.c_str(); *at != '\0';) {
        char* end = nullptr;
        numbers.push_back(std::strtoul(at, &end, 10));
        at = *end == '\0' || end == at ? end : end + 1;
        if (numbers.size() > 6) {
            break;
        }
    }
    return numbers;
}

void Append(standard::Octets& octets, unsigned long number) {
    octets.push_back(static_cast<char>(static_cast<unsigned char>(number)));
}

// A device address in the forms of docs/configure-a-block.md, which a project has checked.
standard::Octets MacOf(std::string const& text) {
    std::vector<unsigned long> const numbers = Numbers(text);
    standard::Octets mac;
    if (text.find('.') != std::string::npos) {
        for (std::size_t i = 0; i < 4 && i < numbers.size(); ++i) {
            Append(mac, numbers[i]);
        }
        unsigned long const port = numbers.size() > 4 ? numbers[4] : DefaultPort;
        Append(mac, port >> 8);
        Append(mac, port);
    } else if (numbers.size() == 1 && numbers[0] > 255) {
        for (int shift : {0, 8, 16, 24}) {
            Append(mac, numbers[0] >> shift);
        }
        mac.resize(6);
    } else {
        for (unsigned long const number : numbers) {
            Append(mac, number);
        }
    }
    return mac;
}

standard::Endpoint EndpointOf(std::string const& text) {
    std::vector<unsigned long> numbers = Numbers(text);
    numbers.resize(5);
    standard::Endpoint endpoint;
    for (std::size_t i = 0; i < 4; ++i) {
        endpoint.address = endpoint.address << 8 | static_cast<std::uint32_t>(numbers[i] & 0xFF);
    }
    endpoint.port = static_cast<std::uint16_t>(numbers[4]);
    return endpoint;
}

}  // namespace

long long NumberField(BlockConfig const& block, char const* name, long long defaultValue) {
    long long const* const value = Field<long long>(block, name);
    return value ? *value : defaultValue;
}

standard::Peer PeerOf(BlockConfig const& block) {
    standard::Peer peer;
    peer.endpoint = EndpointOf(block.address);
    long long const network = NumberField(block, "NetworkNumber", 0);
    if (network != 0) {
        std::string const* const mac = Field<std::string>(block, "MAC");
        peer.remote =
            standard::NetworkAddress{static_cast<std::uint16_t>(network), MacOf(mac ? *mac : DefaultMac)};
    }
    return peer;
}

std::string PeerText(standard::Peer const& peer) {
    std::string text = peer.endpoint.Text();
    if (peer.remote) {
        text += ", network " + std::to_string(peer.remote->network);
        text += peer.remote->mac.empty()
                    ? std::string(", all stations")
                    : ", address " + tools::HexText(peer.remote->mac, tools::HexDigits::Upper);
    }
    return text;
}

}  // namespace workbench
