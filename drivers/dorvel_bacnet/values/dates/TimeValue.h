#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"
#include "Time.h"

// Application tag 11, Time (ASHRAE 135 clause 20.2.13): hour, minute, second, hundredths. The default is
// midnight.
class TimeValue : public HeldValue<Time> {
public:
    using HeldValue::HeldValue;
    TimeValue(char hour, char minute, char second, char hundredths);

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly one tag. Any other shape throws ParseException.
class TimeValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // The time of one tag, which must have four octets and the number 11.
    std::unique_ptr<TimeValue> GetValue(Tag const& tag) const;
    // The same without a value object.
    static Time GetTime(Tag const& tag);
};
