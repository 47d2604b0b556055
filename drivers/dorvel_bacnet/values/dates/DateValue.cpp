#include "DateValue.h"

#include "TagAccess.h"

DateValue::DateValue(char year, char month, char day, char weekday)
    : HeldValue(Date(static_cast<std::uint8_t>(year), static_cast<std::uint8_t>(month),
                     static_cast<std::uint8_t>(day), static_cast<std::uint8_t>(weekday))) {}

Tag DateValue::ToApplicationTag() const {
    return Tag::FromOctets(10, false,
                           {static_cast<char>(value.year), static_cast<char>(value.month),
                            static_cast<char>(value.day), static_cast<char>(value.weekday)});
}

int DateValue::Compare(CPropertyValue& other) const {
    return value.Compare(dynamic_cast<DateValue&>(other).value);
}

std::unique_ptr<CPropertyValue> DateValueParser::Parse(ComplexTag& wrapper) const {
    ExpectSize(wrapper, 1, "tag quantity does not meet expectations");
    return GetValue(PrimitiveSubTag(wrapper, 0));
}

std::unique_ptr<DateValue> DateValueParser::GetValue(Tag const& tag) const {
    return std::make_unique<DateValue>(GetDate(tag));
}

Date DateValueParser::GetDate(Tag const& tag) {
    ExpectFourOctets(tag, 10, "tag type does not meet expectations : Date{10}");
    return DateValue(tag.data[0], tag.data[1], tag.data[2], tag.data[3]).GetValue();
}
