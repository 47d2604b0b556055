#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bench {

// The exchange that is measured: one ReadPropertyMultiple request for Present_Value, Out_Of_Service and
// Status_Flags of one Analog Value on the local network, and its answer. Present_Value is a Real that ends
// with the last two octets of the object identifier, so that each object has a value of its own.

constexpr std::size_t Properties = 3;

// Offsets of the octets that differ from object to object.
namespace request {
constexpr std::size_t InvokeId = 8;
constexpr std::size_t ObjectId = 11;
constexpr std::size_t PropertyList = 15;
}  // namespace request
namespace answer {
constexpr std::size_t InvokeId = 7;
constexpr std::size_t ObjectId = 10;
constexpr std::size_t EndOfReal = 21;
}  // namespace answer
constexpr std::size_t ObjectIdSize = 4;
constexpr std::size_t EndOfRealSize = 2;

// The largest instance number that fits two octets.
constexpr int MostObjects = 0xFFFF;

constexpr std::array<unsigned char, 23> RequestFrame = {0x81, 0x0A, 0x00, 0x17, 0x01, 0x04, 0x02, 0x74,
                                                        0x00, 0x0E, 0x0C, 0x00, 0x80, 0x00, 0x00, 0x1E,
                                                        0x09, 0x55, 0x09, 0x51, 0x09, 0x6F, 0x1F};

constexpr std::array<unsigned char, 37> AnswerFrame = {
    0x81, 0x0A, 0x00, 0x25, 0x01, 0x00, 0x30, 0x00, 0x0E, 0x0C, 0x00, 0x80, 0x00,
    0x00, 0x1E, 0x29, 0x55, 0x4E, 0x44, 0x42, 0x28, 0x00, 0x00, 0x4F,               // 42.0 and a little
    0x29, 0x51, 0x4E, 0x10, 0x4F, 0x29, 0x6F, 0x4E, 0x82, 0x04, 0x00, 0x4F, 0x1F};  // false, no flag set

// The Present_Value of the object with this instance number.
inline float PresentValue(int number) {
    auto const octets = std::uint32_t{0x42280000} | static_cast<std::uint32_t>(number);
    float value;
    std::memcpy(&value, &octets, sizeof value);
    return value;
}

}  // namespace bench
