#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace standard {

// The symbol of a unit of BACnetEngineeringUnits (clause 21) in UTF-8: "°C", "kWh", "m³/h"; "" for no-units.
// No value for numbers without a name of the standard.
std::optional<std::string_view> UnitSymbol(std::uint32_t unit);

// The unit with that symbol, as devices and lists of points write it: "m3/h", "l/s", "degC", "Ohm" and "KWH"
// are found too. No value if no unit has it, or if it is not clear: "mw" is milliwatts or megawatts. Reactive
// energy has two numbers a symbol (watt-hours-reactive, volt-ampere-hours-reactive); it is the lower one.
std::optional<std::uint32_t> UnitOfSymbol(std::string_view symbol);

}  // namespace standard
