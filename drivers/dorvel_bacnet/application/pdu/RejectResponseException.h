#pragma once

#include <stdexcept>
#include <string>

#include "ReasonEnum.h"

// A Reject in answer to a request. The default reason is 0 (Other).
class RejectResponseException : public std::runtime_error {
public:
    // The text is empty.
    RejectResponseException() : std::runtime_error("") {}
    explicit RejectResponseException(std::string const& text) : std::runtime_error(text) {}
    explicit RejectResponseException(char const* text) : std::runtime_error(text) {}
    RejectResponseException(std::string const& text, ReasonEnum why)
        : std::runtime_error(text), reason(why) {}

    ReasonEnum GetReason() const { return reason; }

private:
    ReasonEnum reason{};
};
