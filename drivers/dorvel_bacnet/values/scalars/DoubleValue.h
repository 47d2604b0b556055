#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 5, Double (ASHRAE 135 clause 20.2.7): eight octets, IEEE 754 double.
class DoubleValue : public HeldValue<double> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number, as the low end of the bit pattern. A Real
// here gives a wrong number: nothing converts it.
class DoubleValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
