#pragma once

#include "EncoderBase.h"

// The runtime's texts are UTF-8 already, so their octets are copied, valid or not.
class Utf8Encoder : public EncoderBase {
public:
    std::vector<char> GetBytes(std::string text) const override;
    // Always empty: texts from the wire are taken over by CharacterStringValueParser itself.
    std::string GetString(std::vector<char> octets) const override;
};
