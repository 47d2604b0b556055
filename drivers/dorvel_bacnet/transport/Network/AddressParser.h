#pragma once

#include <string>
#include <vector>

namespace Network {

// Reads the text of a configured BACnet address.
class AddressParser {
public:
    // The octets of an address text, which has one of these forms:
    //
    //   ""                        no octets
    //   "5"                       a device number to 255: one octet
    //   "70000"                   a device number to 4194301: its three low octets, least significant first,
    //                             then three zero octets; a larger number gives no octets, a negative one
    //                             two zero octets
    //   "10:20"                   two octets, decimal
    //   "192.168.10.1[:47809]"    IPv4 address and port, big-endian; the default port is 47808
    //   any other text with '.'   a list of hexadecimal octets separated by ':'
    //
    // Numbers are cut to the width of their field without a range check. Characters after a number are
    // ignored. Throws ParseException for a text of the wrong form. Throws std::runtime_error "unknown error"
    // for a field that is not a number or does not fit into 32 bits.
    static std::vector<char> ParseAddress(std::string const& text);

    // The four octets of a dotted address, each cut to eight bits. Throws std::runtime_error "wrong
    // Ip-address format" unless there are four parts, and what std::stoi throws for a part that is not a
    // number.
    static std::vector<char> ParseIp(std::string const& text);

    // The low 16 bits of the decimal number at the start of the text. The number may have a sign, and its
    // magnitude has to fit into 32 bits on every machine, as std::stoul has it where `long` has 32 bits.
    // Throws std::invalid_argument for a text without a number and std::out_of_range for a larger one, both
    // with the text "stoul".
    static unsigned short ParsePort(std::string const& text);

    // The parts between delimiters, as std::getline reads them: an empty text has no parts, and a delimiter
    // at the end adds none.
    static std::vector<std::string> Split(std::string const& text, char delimiter);
};

}  // namespace Network
