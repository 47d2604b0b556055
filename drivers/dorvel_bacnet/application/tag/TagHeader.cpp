#include "TagHeader.h"

#include <algorithm>

namespace {

constexpr unsigned LargestNumber = 15;

unsigned Unsigned(char octet) {
    return static_cast<unsigned char>(octet);
}

}  // namespace

void TagHeader::SetIsClass(bool isClass) {
    unsigned const others = Unsigned(octet) & ~ClassBit;
    octet = static_cast<char>(isClass ? others | ClassBit : others);
}

void TagHeader::SetTagNumber(char tagNumber) {
    unsigned const number = std::min(Unsigned(tagNumber), LargestNumber);
    octet = static_cast<char>(number << 4 | (Unsigned(octet) & 0x0F));
}

void TagHeader::SetValueLengthType(char valueLengthType) {
    char const limited = Unsigned(valueLengthType) > LengthBits ? ExtendedLength : valueLengthType;
    octet = static_cast<char>(Unsigned(limited) | (Unsigned(octet) & LengthBits));
}
