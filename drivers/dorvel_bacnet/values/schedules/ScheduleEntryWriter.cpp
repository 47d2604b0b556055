#include "ScheduleEntryWriter.h"

#include <cstdint>

#include "BitConverter.h"
#include "BitStringValue.h"
#include "CharacterStringValue.h"
#include "DateValue.h"
#include "DecimalText.h"
#include "ObjectIdentifier.h"
#include "TagAccess.h"
#include "TagKind.h"
#include "TimeValue.h"

namespace {

std::string EntryTimeText(Time const& time) {
    return TwoDigits(time.hour) + TwoDigits(time.minute) + TwoDigits(time.second) +
           TwoDigits(time.hundredths);
}

// Each field but the last is cut to two characters, unlike in the time of an entry.
std::string TimeValueText(Time const& time) {
    return TwoDigits(time.hour).substr(0, 2) + TwoDigits(time.minute).substr(0, 2) +
           TwoDigits(time.second).substr(0, 2) + TwoDigits(time.hundredths);
}

std::string HexText(std::vector<char> const& octets) {
    static char const Digits[] = "0123456789abcdef";
    std::string text;
    for (char const octet : octets) {
        text += Digits[static_cast<unsigned char>(octet) >> 4];
        text += Digits[static_cast<unsigned char>(octet) & 15];
    }
    return text;
}

std::string BitText(std::vector<bool> const& bits) {
    std::string text;
    for (bool const bit : bits) {
        text += bit ? '1' : '0';
    }
    return text;
}

std::string ValueText(Tag const& tag, ScheduleEntryStyle const& style) {
    switch (tag.GetTagNumber()) {
        case 2:
            return std::to_string(static_cast<std::uint32_t>(BitConverter::ToInt64(tag.data, 0))) +
                   style.unsignedSuffix;
        case 3:
            return std::to_string(static_cast<std::int32_t>(BitConverter::ToInt64(tag.data, 0)));
        case 4:
            return DecimalText(BitConverter::ToFloat(tag.data, 0));
        case 5:
            return DecimalText(BitConverter::ToDouble(tag.data, 0));
        case 6:
            return HexText(tag.data);
        case 7:
            return CharacterStringValueParser::GetText(tag);
        case 8:
            return BitText(BitStringValueParser::GetBits(tag));
        case 9:
            return std::to_string(static_cast<std::int32_t>(BitConverter::ToUInt64(tag.data, 0)));
        case 10:
            return DateText(DateValueParser::GetDate(tag));
        default:
            return TimeValueText(TimeValueParser::GetTime(tag));
    }
}

// The fields of an entry after its time: type, length and value.
std::string TailText(TagBase& value, ScheduleEntryStyle const& style) {
    int const type = static_cast<unsigned char>(value.GetTagNumber());
    if (type == 0 || type > 12) {
        return "";
    }
    if (type == 1) {
        return value.GetValLenType() != 0 ? "1,1,1" : "1,1,0";
    }
    Tag const& tag = RequirePrimitive(&value);
    if (type == 12) {
        ObjectIdentifier const object(tag);
        return "12," + std::to_string(static_cast<int>(object.GetObjectType())) + "," +
               std::to_string(object.GetInstanceNumber());
    }
    std::string const text = ValueText(tag, style);
    return std::to_string(type) + "," + std::to_string(text.size()) + "," + text;
}

}  // namespace

void AppendEntries(std::string& text, ComplexTag& list, ScheduleEntryStyle const& style) {
    for (int i = 0; i < list.size(); i += 2) {
        TagBase& value = SubTag(list, i + 1);
        if (style.omitsNull && value.GetTagNumber() == 0) {
            continue;
        }
        if (i != 0) {
            text += ',';
        }
        text += EntryTimeText(TimeValueParser::GetTime(PrimitiveSubTag(list, i))) + ",";
        text += TailText(value, style);
    }
}

std::string TwoDigits(unsigned char octet) {
    return (octet < 10 ? "0" : "") + std::to_string(static_cast<int>(octet));
}

std::string DateText(Date const& date) {
    return std::to_string(static_cast<int>(date.weekday)).substr(0, 1) + TwoDigits(date.day).substr(0, 2) +
           TwoDigits(date.month).substr(0, 2) + std::to_string(1900 + date.year);
}
