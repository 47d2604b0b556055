#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 9, Enumerated. Departure from ASHRAE 135 clause 20.2.11: it is always written in four
// octets, not in the fewest. Installed systems rely on this.
class EnumValue : public HeldValue<unsigned int> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number, and keeps the low 32 bits. It also reads a
// bit string as a number, including the octet of the unused bits: Status_Flags relies on that.
class EnumValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
