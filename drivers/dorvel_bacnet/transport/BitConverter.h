#pragma once

#include <vector>

// Numbers to and from the big-endian octets of BACnet (ASHRAE 135 clause 20.2). All operations are pure and
// keep no reference to what they are given.
//
// Reading takes a big-endian number of any length from no octet at all (0) up to the padded width, 4 or 8
// octets. There is no sign extension: a signed number is negative only when all octets of the padded width
// are there. An input longer than the padded width throws ParseException. The second argument of the reading
// operations is accepted and has no effect: they always start at the first octet.
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

    // Takes up to 4 octets and gives the low 16 bits of their number.
    static unsigned short ToUInt16(std::vector<char> const& octets, int index);
    // Padded width 4.
    static unsigned int ToUInt32(std::vector<char> const& octets, int index);
    static int ToInt32(std::vector<char> const& octets, int index);
    static float ToFloat(std::vector<char> const& octets, int index);
    // Padded width 8.
    static unsigned long long ToUInt64(std::vector<char> const& octets, int index);
    static long long ToInt64(std::vector<char> const& octets, int index);
    static double ToDouble(std::vector<char> const& octets, int index);

    // The octets followed by as many zero octets as `width` asks for; an input longer than `width` throws
    // ParseException.
    static std::vector<char> CompleteTo(std::vector<char> const& octets, int width);
    // The same: in spite of its name it never pads with 0xFF, and the signed reads rely on that.
    static std::vector<char> CompleteWithZerosAndFfsTo(std::vector<char> const& octets, int width);

    // The octets without their leading zeros, but never less than one octet.
    static std::vector<char> CutZeros(std::vector<char> octets);

    // A second name of Reverse.
    static std::vector<char> ToLocalFormat(std::vector<char> const& octets);
};

// The step between host order and network order: the octets reversed on a little-endian machine, as they
// stand on any other.
std::vector<char> Reverse(std::vector<char> octets);
