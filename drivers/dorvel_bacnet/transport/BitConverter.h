#pragma once

#include <vector>

// Converts numbers to and from the big-endian octets of BACnet (ASHRAE 135 clause 20.2). All operations are
// pure: they keep no reference to their arguments, and any thread may call them.
//
// A reading operation takes 0 octets up to the full width of its type, 4 or 8 octets; no octet at all is 0.
// More octets throw ParseException. The second argument of the reading operations has no effect: they always
// start at the first octet.
//
// Departure from clause 20.2.5: there is no sign extension. A signed number is negative only when it has the
// full 4 or 8 octets: FF reads as 255. Installed systems rely on this.
class BitConverter {
public:
    // True: every machine that the driver is built for is little-endian.
    static constexpr bool IsLittleEndian() { return true; }

    // The value in its full width, most significant octet first; floating point as IEEE 754.
    static std::vector<char> GetBytes(unsigned short value);
    static std::vector<char> GetBytes(unsigned int value);
    static std::vector<char> GetBytes(long long value);
    static std::vector<char> GetBytes(unsigned long long value);
    static std::vector<char> GetBytes(float value);
    static std::vector<char> GetBytes(double value);

    // Takes up to 4 octets and returns their low 16 bits.
    static unsigned short ToUInt16(std::vector<char> const& octets, int index);
    // Up to 4 octets.
    static unsigned int ToUInt32(std::vector<char> const& octets, int index);
    static int ToInt32(std::vector<char> const& octets, int index);
    static float ToFloat(std::vector<char> const& octets, int index);
    // Up to 8 octets.
    static unsigned long long ToUInt64(std::vector<char> const& octets, int index);
    static long long ToInt64(std::vector<char> const& octets, int index);
    static double ToDouble(std::vector<char> const& octets, int index);

    // The octets with zero octets appended up to `width`. More octets than `width` throw ParseException.
    static std::vector<char> CompleteTo(std::vector<char> const& octets, int width);
    // The same as CompleteTo. It pads with zeros only, never with FF, for the reason given at the top.
    static std::vector<char> CompleteWithZerosAndFfsTo(std::vector<char> const& octets, int width);

    // The octets without leading zeros. At least one octet remains.
    static std::vector<char> CutZeros(std::vector<char> octets);

    // A second name of Reverse.
    static std::vector<char> ToLocalFormat(std::vector<char> const& octets);
};

// Converts between host order and network order: reverses the octets on a little-endian machine and returns
// them unchanged on any other.
std::vector<char> Reverse(std::vector<char> octets);
