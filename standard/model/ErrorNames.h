#pragma once

#include <cstdint>
#include <string>

namespace standard {

// The names of clauses 18 and 21, such as "unknown-object". A number without a name is "class 64", "code
// 999", "reason 64".
std::string ErrorClassText(std::uint32_t errorClass);
std::string ErrorCodeText(std::uint32_t errorCode);
std::string RejectReasonText(std::uint32_t reason);
std::string AbortReasonText(std::uint32_t reason);

}  // namespace standard
