#pragma once

#include <vector>

// The part of an ErrorPdu after the service choice.
class ErrorBase {
public:
    virtual ~ErrorBase() = default;

    virtual std::vector<char> GetBytes() const = 0;
    virtual bool Equals(ErrorBase& other) const = 0;
};
