#pragma once

#include <string>

#include "PropertyValueParser.h"
#include "TextValue.h"

// Application tag 7, Character String: the character set's octet, then the octets of the text as they
// stand, whatever the set (ASHRAE 135 clause 20.2.9).
class CharacterStringValue : public TextValue {
public:
    using TextValue::TextValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, which must be number 7 of any class and hold the octet of the character set; anything
// else throws ParseException. The text is taken over octet by octet, zeros included.
class CharacterStringValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // What stands behind the octet of the character set, whatever the tag's number; throws as Parse does.
    static std::string GetText(Tag const& tag);
};
