#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// The units of a project: names of the standard, such as "degrees-celsius", or texts of their own.

// The number of the unit with that name; none for any other text. Letter case does not matter, and blanks and
// underscores stand for hyphens.
std::optional<std::uint32_t> UnitOfName(std::string_view name);
// The names of the standard.
std::vector<std::string> const& UnitsByName();

// As it is shown after a value: "°C" for "degrees-celsius", "" for "no-units", any other text as it is.
std::string UnitText(std::string const& unit);

}  // namespace workbench
