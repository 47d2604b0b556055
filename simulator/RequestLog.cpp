#include "RequestLog.h"

#include <iostream>

namespace simulator {

namespace {

std::string hexadecimal(Octets const& octets) {
    constexpr char const* digits = "0123456789ABCDEF";
    std::string text;
    for (unsigned char const octet : octets) {
        text += digits[octet >> 4];
        text += digits[octet & 15];
    }
    return text;
}

}  // namespace

void logExchange(std::string const& deviceName, Datagram const& datagram,
                 std::vector<Datagram> const& answers) {
    std::cerr << deviceName << " < " << datagram.peer.text() << ' ' << hexadecimal(datagram.octets) << '\n';
    for (Datagram const& answer : answers) {
        std::cerr << deviceName << " > " << answer.peer.text() << ' ' << hexadecimal(answer.octets) << '\n';
    }
}

}  // namespace simulator
