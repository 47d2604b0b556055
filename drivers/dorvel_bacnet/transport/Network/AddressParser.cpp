#include "Network/AddressParser.h"

#include <cstdlib>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "BitConverter.h"
#include "Exceptions.h"
#include "Octets.h"

namespace Network {

namespace {

constexpr int LargestDeviceNumber = 4194301;
constexpr unsigned short DefaultPort = 47808;

char Octet(int number) {
    return static_cast<char>(number & 0xFF);
}

Octets WithPort(Octets address, unsigned short port) {
    AppendOctets(address, BitConverter::GetBytes(port));
    return address;
}

Octets ParseDeviceNumber(std::string const& text) {
    int const number = std::stoi(text);
    if (number > LargestDeviceNumber) {
        return {};
    }
    if (number < 0) {
        return {0, 0};
    }
    if (number <= 0xFF) {
        return {Octet(number)};
    }
    return {Octet(number), Octet(number >> 8), Octet(number >> 16), 0, 0, 0};
}

Octets ParsePair(std::string const& text) {
    auto const parts = AddressParser::Split(text, ':');
    if (parts.size() != 2) {
        throw ParseException("wrong device address format");
    }
    return {Octet(std::stoi(parts[0])), Octet(std::stoi(parts[1]))};
}

Octets ParseHexList(std::vector<std::string> const& parts) {
    Octets octets;
    for (auto const& part : parts) {
        octets.push_back(Octet(std::stoi(part, nullptr, 16)));
    }
    return octets;
}

// No value for a text that is not a dotted address: the caller then tries another form.
std::optional<Octets> TryParseIp(std::string const& text) {
    try {
        return AddressParser::ParseIp(text);
    } catch (std::runtime_error const&) {
        return std::nullopt;
    }
}

Octets ParseDotted(std::string const& text) {
    auto const parts = AddressParser::Split(text, ':');
    if (parts.size() == 1) {
        return WithPort(AddressParser::ParseIp(parts[0]), DefaultPort);
    }
    if (parts.size() == 2) {
        if (auto address = TryParseIp(parts[0])) {
            return WithPort(std::move(*address), AddressParser::ParsePort(parts[1]));
        }
    }
    return ParseHexList(parts);
}

Octets ParseAnyForm(std::string const& text) {
    bool const hasColon = text.find(':') != std::string::npos;
    bool const hasDot = text.find('.') != std::string::npos;
    // The dot decides: a list of hexadecimal octets has both a dot and colons.
    if (hasDot || text.empty()) {
        return ParseDotted(text);
    }
    return hasColon ? ParsePair(text) : ParseDeviceNumber(text);
}

}  // namespace

std::vector<char> AddressParser::ParseAddress(std::string const& text) {
    try {
        return ParseAnyForm(text);
    } catch (std::runtime_error const&) {
        throw ParseException("Format error:  " + text +
                             ", expected: {192.168.10.1:478080} or {10:20:30:40:50:60}");
    } catch (...) {
        // std::stoi throws a std::logic_error for what is not a number.
        throw std::runtime_error("unknown error");
    }
}

std::vector<char> AddressParser::ParseIp(std::string const& text) {
    auto const parts = Split(text, '.');
    if (parts.size() != 4) {
        throw std::runtime_error("wrong Ip-address format");
    }
    Octets octets;
    for (auto const& part : parts) {
        octets.push_back(Octet(std::stoi(part)));
    }
    return octets;
}

unsigned short AddressParser::ParsePort(std::string const& text) {
    constexpr long long largestMagnitude = 0xFFFFFFFF;
    char* end = nullptr;
    long long const number = std::strtoll(text.c_str(), &end, 10);
    if (end == text.c_str()) {
        throw std::invalid_argument("stoul");
    }
    if (number < -largestMagnitude || number > largestMagnitude) {
        throw std::out_of_range("stoul");
    }
    return static_cast<unsigned short>(number & 0xFFFF);
}

std::vector<std::string> AddressParser::Split(std::string const& text, char delimiter) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, delimiter);) {
        parts.push_back(part);
    }
    return parts;
}

}  // namespace Network
