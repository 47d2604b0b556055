#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 4, Real (ASHRAE 135 clause 20.2.6): four octets, IEEE 754 single.
class RealValue : public HeldValue<float> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to four octets of the first tag, whatever its number, as the low end of the bit pattern.
class RealValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
