#pragma once

#include <vector>

#include "CPropertyValue.h"
#include "PropertyValueParser.h"

// Application tag 6, Octet String (ASHRAE 135 clause 20.2.8).
class OctetStringValue : public HeldValue<std::vector<char>> {
public:
    using HeldValue::HeldValue;

    Tag ToApplicationTag() const override;
    // The shorter one sorts first; of equal lengths, the last octet that differs decides.
    int Compare(CPropertyValue& other) const override;
};

// Reads the data of the first tag, whatever its number and length.
class OctetStringValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
