#pragma once

#include "CPropertyValue.h"
#include "Date.h"
#include "PropertyValueParser.h"

// Application tag 10, Date (ASHRAE 135 clause 20.2.12): year less 1900, month, day, weekday. By default all
// four are unspecified.
class DateValue : public HeldValue<Date> {
public:
    using HeldValue::HeldValue;
    DateValue(char year, char month, char day, char weekday);

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly one tag. Any other shape throws ParseException.
class DateValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // The date of one tag, which must have four octets and the number 10.
    std::unique_ptr<DateValue> GetValue(Tag const& tag) const;
    // The same without a value object.
    static Date GetDate(Tag const& tag);
};
