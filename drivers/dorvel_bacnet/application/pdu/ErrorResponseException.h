#pragma once

#include <stdexcept>
#include <string>

#include "ErrorClassEnum.h"
#include "ErrorCodeEnum.h"

// An Error in answer to a request. The default class and code are 0.
class ErrorResponseException : public std::runtime_error {
public:
    // "Recieved packet with error"
    ErrorResponseException();
    explicit ErrorResponseException(std::string const& text);
    explicit ErrorResponseException(char const* text);
    ErrorResponseException(std::string const& text, ErrorClassEnum group, ErrorCodeEnum code);
    // Builds the text from the class only, whose name also follows "Code". The code is in GetErrorCode().
    // Installed systems rely on the text.
    ErrorResponseException(ErrorClassEnum group, ErrorCodeEnum code);

    ErrorClassEnum GetErrorClass() const { return errorClass; }
    ErrorCodeEnum GetErrorCode() const { return errorCode; }

private:
    ErrorClassEnum errorClass{};
    ErrorCodeEnum errorCode{};
};
