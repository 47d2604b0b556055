#include "DateTimeValue.h"

#include <stdexcept>

#include "TagAccess.h"

DateTimeValue::DateTimeValue(Date date, Time time) : HeldValue(DateTime(date, time)) {}

Tag DateTimeValue::ToApplicationTag() const {
    throw std::runtime_error("Not emplemented");
}

std::vector<Tag> DateTimeValue::ToApplicationTags() const {
    return {DateValue(value.date).ToApplicationTag(), TimeValue(value.time).ToApplicationTag()};
}

int DateTimeValue::Compare(CPropertyValue& other) const {
    return value.Compare(dynamic_cast<DateTimeValue&>(other).value);
}

std::unique_ptr<CPropertyValue> DateTimeValueParser::Parse(ComplexTag& wrapper) const {
    ExpectSize(wrapper, 2, "tag quantity does not meet expectations");
    Date const date = dateParser.GetDate(PrimitiveSubTag(wrapper, 0));
    Time const time = timeParser.GetTime(PrimitiveSubTag(wrapper, 1));
    return std::make_unique<DateTimeValue>(date, time);
}
