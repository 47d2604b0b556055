#pragma once

#include <string>
#include <vector>

// Converts a text of the runtime to the octets of a character set, and back.
class EncoderBase {
public:
    virtual ~EncoderBase() = default;

    virtual std::vector<char> GetBytes(std::string text) const = 0;
    virtual std::string GetString(std::vector<char> octets) const = 0;
};
