#pragma once

namespace VirtualDataLink {

// A UDP end point. The IPv4 address is a number whose most significant octet is the first of the dotted form.
struct NetAddress {
    unsigned short port = 0;
    unsigned int address = 0;
};

}  // namespace VirtualDataLink
