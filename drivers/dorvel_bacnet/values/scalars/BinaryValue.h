#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// BACnetBinaryPV (ASHRAE 135 clause 21). Other numbers are kept unchanged.
enum class BACnetBinaryPV : int { Inactive = 0, Active = 1 };

// Application tag 9, Enumerated (ASHRAE 135 clause 20.2.11), always written in one octet: the low eight bits
// of the value.
class BinaryValue : public HeldValue<BACnetBinaryPV> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, whatever its number. Data of any length but one octet throws
// ArgumentOutOfRangeException.
class BinaryValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
