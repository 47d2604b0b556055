#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 1, Boolean (ASHRAE 135 clause 20.2.3): no data, the length field is the value.
class BooleanValue : public HeldValue<bool> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, which must have number 1, any class, and a length field of 0 or 1. Any other tag
// throws ParseException.
class BooleanValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
