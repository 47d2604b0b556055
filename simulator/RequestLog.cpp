#include "RequestLog.h"

#include <iostream>

#include "HexText.h"

namespace simulator {

void LogLine(std::string const& deviceName, std::string const& line) {
    std::cerr << deviceName << ' ' << line << '\n';
}

void LogExchange(std::string const& deviceName, Datagram const& datagram,
                 std::vector<Delivery> const& answers) {
    std::cerr << deviceName << " < " << datagram.peer.Text() << ' '
              << tools::HexText(datagram.octets, tools::HexDigits::Upper) << '\n';
    for (Delivery const& answer : answers) {
        std::cerr << deviceName << " > " << answer.datagram.peer.Text() << ' '
                  << tools::HexText(answer.datagram.octets, tools::HexDigits::Upper);
        if (answer.delay.count() > 0) {
            std::cerr << " in " << answer.delay.count() << " ms";
        }
        std::cerr << (answer.fromElsewhere ? " from elsewhere\n" : "\n");
    }
}

}  // namespace simulator
