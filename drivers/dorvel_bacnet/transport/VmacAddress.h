#pragma once

#include <vector>

// No poll uses this class: the device client sends to the socket address of its block. It is the BACnet/IP
// MAC of ASHRAE 135 Annex J: octets 0 to 3 are the IPv4 address, octets 4 and 5 the UDP port, both in network
// order. A configured address may have any number of octets: missing ones count as zero, those after the
// sixth are kept and ignored.
class VmacAddress {
public:
    // Six zero octets.
    explicit VmacAddress(bool isBroadcast);
    // The octets unchanged, whatever their number.
    VmacAddress(std::vector<char> octets, bool isBroadcast);
    VmacAddress(VmacAddress const&) = default;

    // Copies the octets only: the broadcast flag of this address does not change.
    VmacAddress& operator=(VmacAddress const& other);

    unsigned short GetPort() const;
    // The IPv4 address as a number; its most significant octet is the first of the dotted form.
    unsigned int GetAddress() const;
    // Both setters first extend a shorter address to six octets.
    void SetPort(unsigned short port);
    void SetAddress(unsigned int address);

    bool IsBroadCast() const { return broadcast; }
    std::vector<char> GetBytes() const { return bytes; }

private:
    std::vector<char> bytes;
    bool broadcast;
};
