#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Datum.h"
#include "ObjectType.h"

namespace workbench {

// Values as the simulator's device files have them (docs/simulator.md). What it reads encodes as the same
// octets, except that a NaN is the usual one of its sign.

// For a property of this datatype: "21.5", "\"degrees-celsius\"", "\"2026-03-15 08:00:00\"". No value if
// these values are not of the datatype, or if the datatype has no text of its own.
std::optional<std::string> TypedText(standard::Datatype datatype, std::vector<standard::Datum> const& values);

// For a property of any datatype: "unsigned(2)", "constructed(0, real(1))".
std::string AnyText(standard::Datum const& datum);
// Several values, separated by ", ".
std::string AnyTexts(std::vector<standard::Datum> const& values);

// The seven days of a Weekly_Schedule: "{monday = {{\"08:00\", real(21.5)}}}". No value if they are not its
// days.
std::optional<std::string> WeekText(std::vector<standard::Datum> const& days);

}  // namespace workbench
