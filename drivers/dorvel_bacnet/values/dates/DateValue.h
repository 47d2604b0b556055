#pragma once

#include "CPropertyValue.h"
#include "Date.h"
#include "PropertyValueParser.h"

// Application tag 10, Date: year less 1900, month, day, weekday. An unset one is unspecified throughout.
class DateValue : public HeldValue<Date> {
public:
    using HeldValue::HeldValue;
    DateValue(char year, char month, char day, char weekday);

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads a wrapper of exactly one tag; all its failures are ParseException.
class DateValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // From one tag, which must hold four octets and have the number 10.
    std::unique_ptr<DateValue> GetValue(Tag const& tag) const;
};
