#pragma once

#include <string>

#include "PropertyValueParser.h"
#include "TextValue.h"

// Application tag 7, Character String (ASHRAE 135 clause 20.2.9): an octet for the character set, then the
// octets of the text. They are never converted, whatever the set.
class CharacterStringValue : public TextValue {
public:
    using TextValue::TextValue;

    Tag ToApplicationTag() const override;
    int Compare(CPropertyValue& other) const override;
};

// Reads the first tag, which must have number 7, any class, and the octet of the character set. Any other tag
// throws ParseException. The text is copied octet by octet, including zeros.
class CharacterStringValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

    // The text after the octet of the character set, whatever the number of the tag. Throws as Parse does.
    static std::string GetText(Tag const& tag);
};
