#include "TagHeader.h"

#include <algorithm>

#include "Octets.h"

namespace {

constexpr unsigned LargestNumber = 15;

}  // namespace

void TagHeader::SetIsClass(bool isClass) {
    unsigned const others = OctetValue(octet) & ~ClassBit;
    octet = static_cast<char>(isClass ? others | ClassBit : others);
}

void TagHeader::SetTagNumber(char tagNumber) {
    unsigned const number = std::min(OctetValue(tagNumber), LargestNumber);
    octet = static_cast<char>(number << 4 | (OctetValue(octet) & 0x0F));
}

void TagHeader::SetValueLengthType(char valueLengthType) {
    char const limited = OctetValue(valueLengthType) > LengthBits ? ExtendedLength : valueLengthType;
    octet = static_cast<char>(OctetValue(limited) | (OctetValue(octet) & LengthBits));
}
