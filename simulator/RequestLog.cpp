#include "RequestLog.h"

#include <iostream>

#include "TagText.h"

namespace simulator {

void logLine(std::string const& deviceName, std::string const& line) {
    std::cerr << deviceName << ' ' << line << '\n';
}

void logExchange(std::string const& deviceName, Datagram const& datagram,
                 std::vector<Datagram> const& answers) {
    std::cerr << deviceName << " < " << datagram.peer.text() << ' ' << hexadecimal(datagram.octets) << '\n';
    for (Datagram const& answer : answers) {
        std::cerr << deviceName << " > " << answer.peer.text() << ' ' << hexadecimal(answer.octets) << '\n';
    }
}

}  // namespace simulator
