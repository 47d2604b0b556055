#pragma once

#include <stdexcept>
#include <string>

#include "AbortReasonEnum.h"

// A device's abort in answer to a request. Without a reason of its own it holds reason 0 (Other).
class AbortResponseException : public std::runtime_error {
public:
    // The empty text.
    AbortResponseException() : std::runtime_error("") {}
    explicit AbortResponseException(std::string const& text) : std::runtime_error(text) {}
    explicit AbortResponseException(char const* text) : std::runtime_error(text) {}
    AbortResponseException(std::string const& text, AbortReasonEnum why)
        : std::runtime_error(text), reason(why) {}

    AbortReasonEnum GetReason() const { return reason; }

private:
    AbortReasonEnum reason{};
};
