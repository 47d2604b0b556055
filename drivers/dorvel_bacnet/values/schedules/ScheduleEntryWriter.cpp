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

char Digit(unsigned number) {
    return static_cast<char>('0' + number % 10);
}

// The first digits of a number: as many as a number below the limit has.
unsigned CutBelow(unsigned limit, unsigned number) {
    while (number >= limit) {
        number /= 10;
    }
    return number;
}

void AppendEntryTime(std::string& text, Time const& time) {
    AppendTwoDigits(text, time.hour);
    AppendTwoDigits(text, time.minute);
    AppendTwoDigits(text, time.second);
    AppendTwoDigits(text, time.hundredths);
}

// Each field but the last is cut to two characters, unlike in the time of an entry.
std::string TimeValueText(Time const& time) {
    std::string text;
    AppendTwoDigits(text, CutBelow(100, time.hour));
    AppendTwoDigits(text, CutBelow(100, time.minute));
    AppendTwoDigits(text, CutBelow(100, time.second));
    AppendTwoDigits(text, time.hundredths);
    return text;
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

// Appends the fields of an entry after its time: type, length and value.
void AppendTail(std::string& text, TagBase& value, ScheduleEntryStyle const& style) {
    int const type = static_cast<unsigned char>(value.GetTagNumber());
    if (type == 0 || type > 12) {
        return;
    }
    if (type == 1) {
        text += value.GetValLenType() != 0 ? "1,1,1" : "1,1,0";
        return;
    }
    Tag const& tag = RequirePrimitive(&value);
    text += std::to_string(type);
    text += ',';
    if (type == 12) {
        ObjectIdentifier const object(tag);
        text += std::to_string(static_cast<int>(object.GetObjectType()));
        text += ',';
        text += std::to_string(object.GetInstanceNumber());
        return;
    }
    std::string const field = ValueText(tag, style);
    text += std::to_string(field.size());
    text += ',';
    text += field;
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
        AppendEntryTime(text, TimeValueParser::GetTime(PrimitiveSubTag(list, i)));
        text += ',';
        AppendTail(text, value, style);
    }
}

void AppendTwoDigits(std::string& text, unsigned octet) {
    if (octet > 99) {
        text += Digit(octet / 100);
    }
    text += Digit(octet / 10);
    text += Digit(octet);
}

std::string DateText(Date const& date) {
    std::string text(1, Digit(CutBelow(10, date.weekday)));
    AppendTwoDigits(text, CutBelow(100, date.day));
    AppendTwoDigits(text, CutBelow(100, date.month));
    text += std::to_string(1900 + date.year);
    return text;
}
