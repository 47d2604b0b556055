#include "TimeValue.h"

#include "TagAccess.h"

TimeValue::TimeValue(char hour, char minute, char second, char hundredths)
    : HeldValue(Time(static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                     static_cast<std::uint8_t>(second), static_cast<std::uint8_t>(hundredths))) {}

Tag TimeValue::ToApplicationTag() const {
    return Tag::FromOctets(11, false,
                           {static_cast<char>(value.hour), static_cast<char>(value.minute),
                            static_cast<char>(value.second), static_cast<char>(value.hundredths)});
}

int TimeValue::Compare(CPropertyValue& other) const {
    return value.Compare(dynamic_cast<TimeValue&>(other).value);
}

std::unique_ptr<CPropertyValue> TimeValueParser::Parse(ComplexTag& wrapper) const {
    ExpectSize(wrapper, 1, "tag number does not meet expectations");
    return GetValue(PrimitiveSubTag(wrapper, 0));
}

std::unique_ptr<TimeValue> TimeValueParser::GetValue(Tag const& tag) const {
    return std::make_unique<TimeValue>(GetTime(tag));
}

Time TimeValueParser::GetTime(Tag const& tag) {
    ExpectFourOctets(tag, 11, "tag type does not meet expectations : Time{11}");
    return TimeValue(tag.data[0], tag.data[1], tag.data[2], tag.data[3]).GetValue();
}
