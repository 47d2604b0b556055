#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Datum.h"
#include "OctetVector.h"

namespace standard {

// The value of the contents octets of an application tag (clauses 20.2.2 to 20.2.14). Contents that its
// datatype cannot have, numbers of more than 64 bits and texts in a character set without a table here
// are Unknown. The content of a Boolean is one octet, as that of TagReader.
Datum DatumOfContent(std::uint8_t applicationTag, Octets const& content);

// The values of a sequence of tags, such as a property in an answer. No value if tags are cut off, if opening
// and closing tags do not match or if there are more than MostValues of them. Work and memory are linear in
// the number of octets, and the call stack is bounded, however deep the tags are nested.
constexpr std::size_t MostValues = 200000;
std::optional<std::vector<Datum>> DatumsOf(Octets const& tags);

}  // namespace standard
