#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"
#include "Time.h"

// Application tag 11, Time: hour, minute, second, hundredths. An unset one is midnight.
class TimeValue : public HeldValue<Time> {
public:
    using HeldValue::HeldValue;
    TimeValue(char hour, char minute, char second, char hundredths);

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly one tag; all its failures are ParseException.
class TimeValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // From one tag, which must hold four octets and have the number 11.
    std::unique_ptr<TimeValue> GetValue(Tag const& tag) const;
};
