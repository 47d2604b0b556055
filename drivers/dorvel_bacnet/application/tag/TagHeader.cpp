#include "TagHeader.h"

#include <algorithm>

namespace {

constexpr unsigned ClassBit = 0x08;
constexpr unsigned LengthBits = 0x07;
constexpr unsigned LargestNumber = 15;

unsigned Unsigned(char octet) {
    return static_cast<unsigned char>(octet);
}

}  // namespace

char TagHeader::GetTagNumber() const {
    return static_cast<char>(Unsigned(octet) >> 4);
}

bool TagHeader::GetIsClass() const {
    return (Unsigned(octet) & ClassBit) != 0;
}

char TagHeader::GetValueLengthType() const {
    return static_cast<char>(Unsigned(octet) & LengthBits);
}

bool TagHeader::GetIsComplexOpenTag() const {
    return GetValueLengthType() == OpeningTag;
}

bool TagHeader::GetIsComplexCloseTag() const {
    return GetValueLengthType() == ClosingTag;
}

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
