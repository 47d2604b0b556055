#include "Utf8Encoder.h"

std::vector<char> Utf8Encoder::GetBytes(std::string text) const {
    return {text.begin(), text.end()};
}

std::string Utf8Encoder::GetString(std::vector<char> /*octets*/) const {
    return {};
}
