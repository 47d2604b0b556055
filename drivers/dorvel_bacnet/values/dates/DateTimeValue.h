#pragma once

#include "DateTime.h"
#include "DateValue.h"
#include "TimeValue.h"

// BACnetDateTime: a date tag and a time tag one behind the other, so ToApplicationTag() throws
// std::runtime_error.
class DateTimeValue : public HeldValue<DateTime> {
public:
    using HeldValue::HeldValue;
    DateTimeValue(Date date, Time time);

    Tag ToApplicationTag() const override;
    std::vector<Tag> ToApplicationTags() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly two tags, the date and the time; all its failures are ParseException.
class DateTimeValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

private:
    DateValueParser dateParser;
    TimeValueParser timeParser;
};
