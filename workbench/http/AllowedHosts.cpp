#include "AllowedHosts.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "Printable.h"

namespace workbench {

namespace {

struct HostAndPort {
    std::string name;  // in lower case; an IPv6 address without brackets
    std::string port;  // empty: none
    bool isBracketed = false;
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return c < 0x80 ? static_cast<char>(std::tolower(c)) : static_cast<char>(c);
    });
    return lower;
}

std::optional<HostAndPort> Split(std::string_view text) {
    std::string const host = Lower(text);
    std::size_t end = host.find(':');
    HostAndPort parts;
    if (!host.empty() && host.front() == '[') {
        std::size_t const bracket = host.find(']');
        if (bracket == std::string::npos) {
            return {};
        }
        parts = {host.substr(1, bracket - 1), {}, true};
        end = bracket + 1;
    } else {
        parts.name = host.substr(0, end);
    }
    if (end >= host.size()) {
        return parts;
    }
    if (host[end] != ':' || end + 1 == host.size()) {
        return {};
    }
    parts.port = host.substr(end + 1);
    return parts;
}

std::optional<int> PortOf(std::string const& text) {
    int port = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    bool const isPort =
        error == std::errc() && end == text.data() + text.size() && port >= 0 && port <= 65535;
    return isPort ? std::optional<int>(port) : std::nullopt;
}

bool IsIpAddress(std::string const& text) {
    in6_addr octets{};
    return inet_pton(AF_INET, text.c_str(), &octets) == 1 || inet_pton(AF_INET6, text.c_str(), &octets) == 1;
}

bool IsAny(std::string const& address) {
    return address == "0.0.0.0" || address == "::";
}

[[noreturn]] void RefuseAddress(std::string const& text) {
    throw std::runtime_error(
        tools::Quoted(text) +
        " is not an address to listen at; expected ADDRESS, ADDRESS:PORT, [IPV6]:PORT or PORT, "
        "such as 127.0.0.1:8080");
}

}  // namespace

HttpAddress ReadHttpAddress(std::string const& text) {
    HttpAddress address;
    if (text.empty()) {
        return address;
    }
    if (auto const port = PortOf(text)) {
        address.port = *port;
        return address;
    }
    // An IPv6 address without a port may be without brackets too.
    HostAndPort const parts = IsIpAddress(text) ? HostAndPort{Lower(text), {}, false}
                                                : Split(text).value_or(HostAndPort{"?", {}, false});
    if (!parts.name.empty() && parts.name != "localhost") {
        address.address = parts.name;
    }
    auto const port = parts.port.empty() ? 0 : PortOf(parts.port);
    if (!port || !IsIpAddress(address.address)) {
        RefuseAddress(text);
    }
    address.port = *port;
    return address;
}

bool IsLoopback(std::string const& address) {
    return address == "::1" || address.compare(0, 4, "127.") == 0;
}

std::string HostText(HttpAddress const& address) {
    bool const isLong = address.address.find(':') != std::string::npos;
    return (isLong ? "[" + address.address + "]" : address.address) + ":" + std::to_string(address.port);
}

AllowedHosts::AllowedHosts(HttpAddress const& listeningAddress, std::vector<std::string> const& proxyNames)
    : listening(listeningAddress) {
    for (std::string const& name : proxyNames) {
        names.push_back(Lower(name));
    }
}

bool AllowedHosts::IsProxyName(std::string const& host) const {
    std::string const lower = Lower(host);
    auto const parts = Split(lower);
    return parts && std::any_of(names.begin(), names.end(), [&](std::string const& name) {
               return name == lower || name == parts->name;
           });
}

bool AllowedHosts::Allows(std::string_view host) const {
    if (IsProxyName(std::string(host))) {
        return true;
    }
    auto const parts = Split(host);
    if (!parts || PortOf(parts->port.empty() ? "80" : parts->port) != listening.port) {
        return false;
    }
    if (parts->name == "localhost") {
        return IsLoopback(listening.address) || IsAny(listening.address);
    }
    return parts->name == listening.address || (IsAny(listening.address) && IsIpAddress(parts->name));
}

bool AllowedHosts::IsOwnOrigin(std::string_view origin, std::string_view host) const {
    std::size_t const end = origin.find("://");
    std::string const scheme = Lower(origin.substr(0, std::min(end, origin.size())));
    if (end == std::string_view::npos || (scheme != "http" && scheme != "https")) {
        return false;
    }
    std::string const place = Lower(origin.substr(end + 3));
    return place == Lower(host) || IsProxyName(place);
}

}  // namespace workbench
