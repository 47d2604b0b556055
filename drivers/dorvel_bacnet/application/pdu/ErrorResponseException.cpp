#include "ErrorResponseException.h"

#include "ErrorPdu.h"

namespace {

constexpr char DefaultText[] = "Recieved packet with error";

// The name of the class also follows "Code". Installed systems rely on the text.
std::string TextOf(ErrorClassEnum group) {
    std::string const name = ErrorPdu::Message(group);
    return std::string(DefaultText) + ". Class " + name + " Code " + name;
}

}  // namespace

ErrorResponseException::ErrorResponseException() : std::runtime_error(DefaultText) {}

ErrorResponseException::ErrorResponseException(std::string const& text) : std::runtime_error(text) {}

ErrorResponseException::ErrorResponseException(char const* text) : std::runtime_error(text) {}

ErrorResponseException::ErrorResponseException(std::string const& text, ErrorClassEnum group,
                                               ErrorCodeEnum code)
    : std::runtime_error(text), errorClass(group), errorCode(code) {}

ErrorResponseException::ErrorResponseException(ErrorClassEnum group, ErrorCodeEnum code)
    : ErrorResponseException(TextOf(group), group, code) {}
