#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 1, Boolean: no data, the length field is the value (ASHRAE 135 clause 20.2.3).
class BooleanValue : public HeldValue<bool> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, which must be number 1 of any class with a length field of 0 or 1; anything else
// throws ParseException.
class BooleanValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
