#pragma once

#include <vector>

#include "ErrorBase.h"
#include "ErrorClassEnum.h"
#include "ErrorCodeEnum.h"

// An error of class and code: two application tags of type Enumerated with one octet each. Departure from
// ASHRAE 135 clause 20.2.11: numbers above 255 lose their upper bits on the wire.
class SimpleError : public ErrorBase {
public:
    SimpleError() = default;
    SimpleError(ErrorClassEnum group, ErrorCodeEnum code);

    std::vector<char> GetBytes() const override;

    // Compares class and code. Throws std::bad_cast for an error of another class.
    bool Equals(ErrorBase& other) const override;
    bool Equals(SimpleError& other) const;

    ErrorClassEnum GetErrorClass() const { return errorClass; }
    ErrorCodeEnum GetErrorCode() const { return errorCode; }

private:
    ErrorClassEnum errorClass{};
    ErrorCodeEnum errorCode{};
};
