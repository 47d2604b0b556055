#pragma once

#include <vector>

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 8, Bit String (ASHRAE 135 clause 20.2.10): an octet with the number of unused bits, then
// the bits. Element 0 is the top bit of the first octet.
class BitStringValue : public HeldValue<std::vector<bool>> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    // The shorter one sorts first; of equal lengths, the one with a clear bit at the first difference.
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, whatever its number. A tag without data, or with more unused bits than bits, throws
// ParseException.
class BitStringValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // The used bits of one tag; throws as Parse does.
    static std::vector<bool> GetBits(Tag const& tag);
};
