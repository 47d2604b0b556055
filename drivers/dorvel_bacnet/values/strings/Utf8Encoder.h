#pragma once

#include "EncoderBase.h"

// The texts of the runtime are UTF-8 already, so the octets are copied, valid or not.
class Utf8Encoder : public EncoderBase {
public:
    std::vector<char> GetBytes(std::string text) const override;
    // Always empty: CharacterStringValueParser reads the texts from the wire itself.
    std::string GetString(std::vector<char> octets) const override;
};
