#pragma once

#include <vector>

// What an ErrorPdu carries behind its service choice.
class ErrorBase {
public:
    virtual ~ErrorBase() = default;

    virtual std::vector<char> GetBytes() const = 0;
    virtual bool Equals(ErrorBase& other) const = 0;
};
