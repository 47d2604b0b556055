#pragma once

#include <string>
#include <vector>

namespace Network {

// Reads the text of a configured BACnet address.
class AddressParser {
public:
    // The octets of an address text, which is of one of these forms:
    //
    //   ""                        no octets
    //   "5"                       a device number to 255: one octet
    //   "70000"                   a device number to 4194301: its three low octets, least significant first,
    //                             then three zero octets; any number above gives no octets, one below
    //                             zero gives two zero octets
    //   "10:20"                   two octets, decimal
    //   "192.168.10.1[:47809]"    IPv4 address and port, big-endian; without a port 47808
    //   anything else with a '.'  a list of hexadecimal octets between ':'
    //
    // Numbers are cut to the width of their field without a range test, and characters behind a number are
    // ignored. Throws ParseException for a text of the wrong form and std::runtime_error "unknown error" for
    // a field that is no number, or one that does not fit 32 bits.
    static std::vector<char> ParseAddress(std::string const& text);

    // The four octets of a dotted address, each cut to eight bits. Throws std::runtime_error "wrong
    // Ip-address format" if there are not four parts, and what std::stoi throws for a part that is no number.
    static std::vector<char> ParseIp(std::string const& text);

    // The low 16 bits of the decimal number at the start of the text, as std::stoul reads it where `long` has
    // 32 bits: a sign is allowed, the magnitude has to fit them. Throws std::invalid_argument for a text
    // without a number and std::out_of_range for a larger one, both with the text "stoul".
    static unsigned short ParsePort(std::string const& text);

    // The parts between delimiters, as std::getline reads them: an empty text has none, and a delimiter at
    // the end adds none.
    static std::vector<std::string> Split(std::string const& text, char delimiter);
};

}  // namespace Network
