#pragma once

namespace VirtualDataLink {

// A UDP endpoint. The most significant octet of the IPv4 address is the first of the dotted form.
struct NetAddress {
    unsigned short port = 0;
    unsigned int address = 0;
};

}  // namespace VirtualDataLink
