#pragma once

#include "DateTime.h"
#include "DateValue.h"
#include "TimeValue.h"

// BACnetDateTime (ASHRAE 135 clause 21): a date tag and then a time tag, so ToApplicationTag() throws
// std::runtime_error.
class DateTimeValue : public HeldValue<DateTime> {
public:
    using HeldValue::HeldValue;
    DateTimeValue(Date date, Time time);

    Tag ToApplicationTag() const override;
    std::vector<Tag> ToApplicationTags() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly two tags, the date and the time. Any other shape throws ParseException.
class DateTimeValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

private:
    DateValueParser dateParser;
    TimeValueParser timeParser;
};
