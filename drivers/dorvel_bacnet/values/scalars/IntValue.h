#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 3, Signed (ASHRAE 135 clause 20.2.5). Written without leading zero octets, with no
// regard to the sign bit: 200 is the one octet C8, and a negative number takes all eight.
class IntValue : public HeldValue<long long> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number, without sign extension: the one octet
// FF is 255.
class IntValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
