#include "AddressText.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace workbench {

namespace {

// The largest device number that the driver converts to an address.
constexpr long LargestDeviceNumber = 4194301;

// The number that the digits of a text give, up to limit; -1 for any other text.
long Number(std::string_view text, long limit) {
    if (text.empty() || text.size() > 10) {
        return -1;
    }
    long number = 0;
    for (char const c : text) {
        if (c < '0' || c > '9') {
            return -1;
        }
        number = number * 10 + (c - '0');
        if (number > limit) {
            return -1;
        }
    }
    return number;
}

std::vector<std::string_view> Split(std::string_view text, char delimiter) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t const end = std::min(text.find(delimiter, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

bool AreOctets(std::vector<std::string_view> const& parts) {
    return std::all_of(parts.begin(), parts.end(),
                       [](std::string_view part) { return Number(part, 255) >= 0; });
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string MistakeInIp(std::string_view text) {
    auto const octets = Split(text, '.');
    if (octets.size() != 4 || !AreOctets(octets)) {
        return Quoted(text) + " is not an IPv4 address such as \"192.168.1.20\"";
    }
    return {};
}

std::string MistakeInPort(std::string_view text) {
    return Number(text, 65535) >= 1 ? std::string() : Quoted(text) + " is not a port from 1 to 65535";
}

}  // namespace

std::string MistakeInPeer(std::string_view text) {
    auto const parts = Split(text, ':');
    if (parts.size() != 2) {
        return Quoted(text) + " is not an address with a port such as \"192.168.1.20:47808\"";
    }
    std::string const mistake = MistakeInIp(parts[0]);
    return mistake.empty() ? MistakeInPort(parts[1]) : mistake;
}

std::string MistakeInDeviceAddress(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    auto const parts = Split(text, ':');
    if (text.find('.') != std::string_view::npos) {
        return parts.size() == 1 ? MistakeInIp(text) : MistakeInPeer(text);
    }
    bool const good =
        parts.size() == 1 ? Number(text, LargestDeviceNumber) >= 0 : parts.size() == 2 && AreOctets(parts);
    if (good) {
        return {};
    }
    return Quoted(text) + " is not a device address such as \"192.168.1.20:47808\", \"10:20\" or \"5\"";
}

}  // namespace workbench
