#pragma once

#include <string>

#include "CPropertyValue.h"
#include "EncodingTypeEnum.h"

// A property value that is a text with the number of its character set.
class TextValue : public CPropertyValue {
public:
    TextValue() = default;
    TextValue(std::string text, EncodingTypeEnum textEncoding);

    std::string GetValue() const { return value; }
    // The same without a copy, valid while this object lives.
    std::string const& View() const& { return value; }
    std::string const& View() const&& = delete;
    EncodingTypeEnum GetEncoding() const { return encoding; }

protected:
    // The difference of the encodings; if they are equal, -1, 0 or 1 by the octets of the texts.
    int CompareText(TextValue const& other) const;

    std::string value;
    EncodingTypeEnum encoding = EncodingTypeEnum::Utf8;
};
