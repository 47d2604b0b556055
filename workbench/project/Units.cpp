#include "Units.h"

#include <algorithm>
#include <cctype>

#include "Enumerations.h"
#include "UnitNames.h"
#include "UnitSymbols.h"

namespace workbench {

using standard::Datatype;

namespace {

char AsInNames(unsigned char letter) {
    return letter == ' ' || letter == '_' ? '-' : static_cast<char>(std::tolower(letter));
}

}  // namespace

std::optional<std::uint32_t> UnitOfName(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), AsInNames);
    return standard::EnumeratedOfName(Datatype::Units, text);
}

std::vector<std::string> const& UnitsByName() {
    static std::vector<std::string> const names(standard::UnitNames,
                                                standard::UnitNames + standard::UnitNameCount);
    return names;
}

std::string UnitText(std::string const& unit) {
    auto const number = UnitOfName(unit);
    auto const symbol = number ? standard::UnitSymbol(*number) : std::nullopt;
    return symbol ? std::string(*symbol) : unit;
}

}  // namespace workbench
