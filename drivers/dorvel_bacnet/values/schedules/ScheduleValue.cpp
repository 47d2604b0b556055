#include "ScheduleValue.h"

#include <stdexcept>
#include <utility>

#include "BitConverter.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DecimalText.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "ScheduleText.h"
#include "TimeValue.h"
#include "UintValue.h"

namespace {

TimeValue TimeFromText(std::string const& text) {
    auto const field = [&text](std::size_t place) {
        // A field that is missing or incomplete must throw, and std::stoi does for an empty text.
        return static_cast<char>(std::stoi(place + 2 <= text.size() ? text.substr(place, 2) : ""));
    };
    return TimeValue(field(0), field(2), field(4), field(6));
}

TimeValue TimeValueFromText(int length, std::string const& text) {
    if (length != 8) {
        throw std::runtime_error("Time - len != 8");
    }
    return TimeFromText(text);
}

std::vector<bool> BitsFromText(std::string const& text) {
    std::vector<bool> bits;
    for (char const bit : text) {
        bits.push_back(HexToBytes({'0', bit}).front() != 0);
    }
    return bits;
}

Tag ObjectIdentifierTag(int objectType, int instance) {
    // The instance is not cut to its 22 bits: excess bits reach the object type.
    unsigned const packed = static_cast<unsigned>(objectType) << 22 | static_cast<unsigned>(instance);
    return Tag::FromOctets(12, false, BitConverter::GetBytes(packed));
}

}  // namespace

ScheduleValue::ScheduleValue(std::string text, EncodingTypeEnum textEncoding, int dayCount)
    : TextValue(std::move(text), textEncoding) {
    for (int i = 0; i < dayCount; ++i) {
        days.push_back(std::make_unique<ComplexTag>(static_cast<char>(4), true));
    }
}

Tag ScheduleValue::ToApplicationTag() const {
    throw std::runtime_error("Not emplemented");
}

std::vector<Tag> ScheduleValue::ToApplicationTags() const {
    return {};
}

Tag ScheduleValue::ToTimeTag(std::string const& time) {
    return TimeFromText(time).ToApplicationTag();
}

Tag ScheduleValue::ToComplexTag(std::string const& type, std::string const& length, std::string const& text) {
    int const typeNumber = std::stoi(type);
    int const lengthNumber = std::stoi(length);
    switch (typeNumber) {
        case 1:
            return BooleanValue(std::stoi(text) != 0).ToApplicationTag();
        case 2:
            return UintValue(std::stoi(text) != 0 ? 1 : 0).ToApplicationTag();
        case 3:
            return IntValue(std::stoi(text) != 0 ? 1 : 0).ToApplicationTag();
        case 4:
            return RealValue(static_cast<float>(DecimalNumber(text))).ToApplicationTag();
        case 5:
            return DoubleValue(DecimalNumber(text)).ToApplicationTag();
        case 6:
            return OctetStringValue(HexToBytes(text)).ToApplicationTag();
        case 7:
            return CharacterStringValue(text, EncodingTypeEnum::Utf8).ToApplicationTag();
        case 8:
            return BitStringValue(BitsFromText(text)).ToApplicationTag();
        case 9:
            return EnumValue(static_cast<unsigned>(std::stoi(text))).ToApplicationTag();
        case 10:
            return DateFromText(text, "Date - len != 9").ToApplicationTag();
        case 11:
            return TimeValueFromText(lengthNumber, text).ToApplicationTag();
        case 12:
            return ObjectIdentifierTag(lengthNumber, std::stoi(text));
        default:
            return Tag();
    }
}
