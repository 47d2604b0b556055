#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Datum.h"
#include "ObjectType.h"

namespace workbench {

// Fields of a point list as values.

// "21.5", "21,5", "-3", "1e3"; no value for anything else, also for numbers that are not finite.
std::optional<double> DecimalOf(std::string_view text);
// A whole number from 0 to `last`, also as "12.0".
std::optional<std::uint32_t> WholeNumberOf(std::string_view text, std::uint32_t last);
// "Y" or "N" for the words of several languages and programs: "yes", "J", "1", "x", "true" and so on.
std::optional<bool> AnswerOf(std::string_view text);

// A value of the datatype; no value if the text is not one, or for a datatype that no column has.
// Enumerations by number or name.
std::optional<standard::Datum> DatumOf(std::string_view text, standard::Datatype datatype);
standard::Datum TextDatum(std::string text);
standard::Datum UnsignedDatum(std::uint32_t number);
standard::Datum EnumeratedDatum(std::uint32_t number);
standard::Datum BooleanDatum(bool value);

// The datatype in words, with an article: "a Real", "an Unsigned".
char const* NameOf(standard::Datatype datatype);

}  // namespace workbench
