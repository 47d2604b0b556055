#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 2, Unsigned (ASHRAE 135 clause 20.2.4), written without leading zero octets.
class UintValue : public HeldValue<unsigned long long> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number.
class UintValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
