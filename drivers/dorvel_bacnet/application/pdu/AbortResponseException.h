#pragma once

#include <stdexcept>
#include <string>

#include "AbortReasonEnum.h"

// An Abort in answer to a request. The default reason is 0 (Other).
class AbortResponseException : public std::runtime_error {
public:
    // The text is empty.
    AbortResponseException() : std::runtime_error("") {}
    explicit AbortResponseException(std::string const& text) : std::runtime_error(text) {}
    explicit AbortResponseException(char const* text) : std::runtime_error(text) {}
    AbortResponseException(std::string const& text, AbortReasonEnum why)
        : std::runtime_error(text), reason(why) {}

    AbortReasonEnum GetReason() const { return reason; }

private:
    AbortReasonEnum reason{};
};
