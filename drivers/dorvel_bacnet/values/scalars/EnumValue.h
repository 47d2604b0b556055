#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 9, Enumerated, always written in four octets (ASHRAE 135 clause 20.2.11).
class EnumValue : public HeldValue<unsigned int> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number, and keeps the low 32 bits. So it also
// reads a bit string as a number, its unused-bits octet included.
class EnumValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
