#pragma once

#include <stdexcept>
#include <string>

#include "ErrorClassEnum.h"
#include "ErrorCodeEnum.h"

// A device's error in answer to a request. Without class and code of its own it holds 0 for both.
class ErrorResponseException : public std::runtime_error {
public:
    // "Recieved packet with error"
    ErrorResponseException();
    explicit ErrorResponseException(std::string const& text);
    explicit ErrorResponseException(char const* text);
    ErrorResponseException(std::string const& text, ErrorClassEnum group, ErrorCodeEnum code);
    // Builds its text from the class and names that twice, behind "Class" and behind "Code", on purpose. The
    // code is in the field alone.
    ErrorResponseException(ErrorClassEnum group, ErrorCodeEnum code);

    ErrorClassEnum GetErrorClass() const { return errorClass; }
    ErrorCodeEnum GetErrorCode() const { return errorCode; }

private:
    ErrorClassEnum errorClass{};
    ErrorCodeEnum errorCode{};
};
