#pragma once

#include <vector>

// The BACnet/IP MAC of ASHRAE 135 Annex J: octets 0 to 3 are the IPv4 address and octets 4 and 5 the UDP
// port, both in network order. A configured address may have any other number of octets: what is missing
// counts as zero, what is too much is kept and ignored.
class VmacAddress {
public:
    // Six zero octets.
    explicit VmacAddress(bool isBroadcast);
    // The octets as they are, of whatever length.
    VmacAddress(std::vector<char> octets, bool isBroadcast);
    VmacAddress(VmacAddress const&) = default;

    // Copies the octets only: whether this address means a broadcast stays what it was.
    VmacAddress& operator=(VmacAddress const& other);

    unsigned short GetPort() const;
    // The address as a number, its most significant octet the first of the dotted form.
    unsigned int GetAddress() const;
    // Both setters lengthen a shorter address to six octets first.
    void SetPort(unsigned short port);
    void SetAddress(unsigned int address);

    bool IsBroadCast() const { return broadcast; }
    std::vector<char> GetBytes() const { return bytes; }

private:
    std::vector<char> bytes;
    bool broadcast;
};
