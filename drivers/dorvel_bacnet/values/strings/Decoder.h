#pragma once

// Reads single octets from a buffer.
class Decoder {
public:
    // The octet at `position`, which must point at one.
    static char GetValue(char* position);
};
