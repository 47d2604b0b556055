#pragma once

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 3, Signed. Departure from ASHRAE 135 clause 20.2.5: leading zero octets are cut without
// regard to the sign bit, so 200 is the single octet C8 and a negative number has all eight. Installed
// systems rely on this.
class IntValue : public HeldValue<long long> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads up to eight octets of the first tag, whatever its number. Departure from clause 20.2.5: there is no
// sign extension, so the single octet FF is 255.
class IntValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
