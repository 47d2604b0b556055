#pragma once

#include <vector>

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 8, Bit String: an octet with the number of unused bits, then the bits, element 0 at the
// top of the first octet (ASHRAE 135 clause 20.2.10).
class BitStringValue : public HeldValue<std::vector<bool>> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    // The shorter one is less; of equal lengths, the one with a clear bit where they first differ.
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, whatever its number. No data, or more unused bits than bits, throws ParseException.
class BitStringValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // The used bits of one tag; throws as Parse does.
    static std::vector<bool> GetBits(Tag const& tag);
};
