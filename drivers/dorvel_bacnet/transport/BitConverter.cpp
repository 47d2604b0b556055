#include "BitConverter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Exceptions.h"

namespace {

template <typename Number>
std::vector<char> BigEndianBytes(Number value) {
    std::vector<char> native(sizeof value);
    std::memcpy(native.data(), &value, sizeof value);
    return Reverse(std::move(native));
}

void RequireWidth(std::vector<char> const& octets, std::size_t width) {
    if (octets.size() > width) {
        throw ParseException("number has too many octets");
    }
}

// Gives the same number as padding, reversing and reading in host order, without the two copies.
template <typename Unsigned>
Unsigned BigEndianNumber(std::vector<char> const& octets) {
    RequireWidth(octets, sizeof(Unsigned));
    Unsigned number = 0;
    for (char const octet : octets) {
        number = number << 8 | static_cast<unsigned char>(octet);
    }
    return number;
}

// The number's bits as a type of the same width.
template <typename Result, typename Unsigned>
Result BitCast(Unsigned bits) {
    static_assert(sizeof(Result) == sizeof bits, "a cast between different widths");
    Result result;
    std::memcpy(&result, &bits, sizeof result);
    return result;
}

}  // namespace

std::vector<char> BitConverter::GetBytes(unsigned short value) {
    return BigEndianBytes(value);
}
std::vector<char> BitConverter::GetBytes(unsigned int value) {
    return BigEndianBytes(value);
}
std::vector<char> BitConverter::GetBytes(long long value) {
    return BigEndianBytes(value);
}
std::vector<char> BitConverter::GetBytes(unsigned long long value) {
    return BigEndianBytes(value);
}
std::vector<char> BitConverter::GetBytes(float value) {
    return BigEndianBytes(value);
}
std::vector<char> BitConverter::GetBytes(double value) {
    return BigEndianBytes(value);
}

unsigned short BitConverter::ToUInt16(std::vector<char> const& octets, int /*index*/) {
    return static_cast<unsigned short>(BigEndianNumber<std::uint32_t>(octets));
}

unsigned int BitConverter::ToUInt32(std::vector<char> const& octets, int /*index*/) {
    return BigEndianNumber<std::uint32_t>(octets);
}

unsigned long long BitConverter::ToUInt64(std::vector<char> const& octets, int /*index*/) {
    return BigEndianNumber<std::uint64_t>(octets);
}

int BitConverter::ToInt32(std::vector<char> const& octets, int /*index*/) {
    return BitCast<int>(BigEndianNumber<std::uint32_t>(octets));
}

long long BitConverter::ToInt64(std::vector<char> const& octets, int /*index*/) {
    return BitCast<long long>(BigEndianNumber<std::uint64_t>(octets));
}

float BitConverter::ToFloat(std::vector<char> const& octets, int /*index*/) {
    return BitCast<float>(BigEndianNumber<std::uint32_t>(octets));
}

double BitConverter::ToDouble(std::vector<char> const& octets, int /*index*/) {
    return BitCast<double>(BigEndianNumber<std::uint64_t>(octets));
}

std::vector<char> BitConverter::CompleteTo(std::vector<char> const& octets, int width) {
    auto const paddedWidth = static_cast<std::size_t>(std::max(width, 0));
    RequireWidth(octets, paddedWidth);
    std::vector<char> completed(paddedWidth);
    std::copy(octets.begin(), octets.end(), completed.begin());
    return completed;
}

std::vector<char> BitConverter::CompleteWithZerosAndFfsTo(std::vector<char> const& octets, int width) {
    return CompleteTo(octets, width);
}

std::vector<char> BitConverter::CutZeros(std::vector<char> octets) {
    auto const isNotZero = [](char octet) { return octet != 0; };
    octets.erase(octets.begin(), std::find_if(octets.begin(), octets.end(), isNotZero));
    if (octets.empty()) {
        octets.push_back(0);
    }
    return octets;
}

std::vector<char> BitConverter::ToLocalFormat(std::vector<char> const& octets) {
    return Reverse(octets);
}

std::vector<char> Reverse(std::vector<char> octets) {
    if (BitConverter::IsLittleEndian()) {
        std::reverse(octets.begin(), octets.end());
    }
    return octets;
}
