#pragma once

#include <optional>
#include <string>

#include "OctetVector.h"

namespace standard {

// The text of the contents octets of a character string (clause 20.2.9), in UTF-8: sets 0 (UTF-8), 3 (UCS-4),
// 4 (UCS-2, also with surrogate pairs), 5 (ISO 8859-1), and those texts of set 1 (DBCS) that are ASCII.
// Octets that are not valid in their set become U+FFFD. No value for an empty content and for other sets: JIS
// X 0208, and code pages of DBCS.
std::optional<std::string> TextOfCharacterString(Octets const& content);

}  // namespace standard
