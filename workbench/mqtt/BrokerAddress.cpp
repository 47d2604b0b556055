#include "BrokerAddress.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <stdexcept>
#include <string_view>

#include "Printable.h"

namespace workbench {

namespace {

constexpr std::size_t LongestHost = 253;
constexpr unsigned short PlainPort = 1883;
constexpr unsigned short TlsPort = 8883;

[[noreturn]] void Refuse(std::string const& mistake) {
    throw std::runtime_error(mistake + "; expected is mqtt://HOST[:PORT], or mqtts://HOST[:PORT] for TLS");
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    bool const matches = text.size() >= prefix.size() &&
                         std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
                             return a == std::tolower(static_cast<unsigned char>(b));
                         });
    if (matches) {
        text.remove_prefix(prefix.size());
    }
    return matches;
}

bool IsIpv6(std::string const& host) {
    in6_addr address{};
    return inet_pton(AF_INET6, host.c_str(), &address) == 1;
}

bool IsHostName(std::string_view host) {
    return !host.empty() && host.size() <= LongestHost && std::all_of(host.begin(), host.end(), [](char c) {
        auto const octet = static_cast<unsigned char>(c);
        return octet < 0x80 && (std::isalnum(octet) || c == '.' || c == '-' || c == '_');
    });
}

unsigned short ReadPort(std::string_view digits) {
    unsigned port = 0;
    auto const [end, mistake] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (mistake != std::errc() || end != digits.data() + digits.size() || port < 1 || port > 65535) {
        Refuse("port " + tools::Quoted(digits) + " is not a number from 1 to 65535");
    }
    return static_cast<unsigned short>(port);
}

// Leaves what follows the host, ":PORT" or nothing.
std::string TakeHost(std::string_view& rest) {
    bool const isInBrackets = !rest.empty() && rest.front() == '[';
    std::size_t const end = std::min(rest.find(isInBrackets ? ']' : ':'), rest.size());
    std::string const host(isInBrackets ? rest.substr(1, end - 1) : rest.substr(0, end));
    if (isInBrackets ? end == rest.size() || !IsIpv6(host) : !IsHostName(host)) {
        Refuse("host " + tools::Quoted(host) + " is not a name or an address");
    }
    rest.remove_prefix(isInBrackets ? end + 1 : end);
    return host;
}

}  // namespace

BrokerAddress ReadBrokerAddress(std::string const& text) {
    if (text.find('@') != std::string::npos) {
        throw std::runtime_error(
            "the address has a user or a password in it, which everybody on this machine can read in the "
            "list of "
            "processes; write the user in the first line of a file and the password in the second, and give "
            "the file with --mqtt-login FILE");
    }
    std::string_view rest = text;
    BrokerAddress address;
    address.isTls = TakePrefix(rest, "mqtts://");
    if (!address.isTls && !TakePrefix(rest, "mqtt://")) {
        Refuse(tools::Quoted(text) + " is not the address of a broker");
    }
    if (!rest.empty() && rest.back() == '/') {
        rest.remove_suffix(1);
    }
    address.host = TakeHost(rest);
    address.port = address.isTls ? TlsPort : PlainPort;
    if (!rest.empty()) {
        if (rest.front() != ':') {
            Refuse(tools::Quoted(text) + " has " + tools::Quoted(rest) + " after the host");
        }
        address.port = ReadPort(rest.substr(1));
    }
    return address;
}

std::string AddressText(BrokerAddress const& address) {
    bool const isIpv6 = address.host.find(':') != std::string::npos;
    return (isIpv6 ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

}  // namespace workbench
