#include "UnitCode.h"

#include <algorithm>

#include "Enumerations.h"
#include "FieldValue.h"
#include "Printable.h"
#include "UnitSymbols.h"

namespace workbench {

using standard::Datatype;
using standard::PropertyId;

namespace {

constexpr std::uint32_t LastUnit = 65535;
constexpr std::uint32_t NoUnits = 95;

// The text without control characters, and without blanks around it.
std::string Plain(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    std::size_t const first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<std::uint32_t> UnitOf(std::string const& text, CodeTexts const& units) {
    if (auto const number = WholeNumberOf(text, LastUnit)) {
        return number;
    }
    if (auto const datum = DatumOf(text, Datatype::Units)) {
        return static_cast<std::uint32_t>(datum->number);
    }
    auto const listed = units.NumberOf(text);
    return listed && *listed <= LastUnit ? listed : standard::UnitOfSymbol(text);
}

// A Loop has the unit of its output (clause 12.17). Types without a table are expected to have Units.
std::optional<PropertyId> PropertyOf(std::uint16_t code) {
    for (standard::ObjectType const& type : standard::AllObjectTypes()) {
        if (type.code == code) {
            for (PropertyId const property : {PropertyId::Units, PropertyId::Output_Units}) {
                if (type.Find(property)) {
                    return property;
                }
            }
            return std::nullopt;
        }
    }
    return PropertyId::Units;
}

// `unit` is the number of the text.
void Set(ObjectRecord& object, std::optional<std::uint32_t> unit, std::string const& text) {
    auto const property = PropertyOf(object.id.type);
    if (unit && property) {
        object.Set(*property, {EnumeratedDatum(*unit)});
    } else if (unit != NoUnits) {
        auto const name = unit ? standard::NameOfEnumerated(Datatype::Units, *unit) : std::nullopt;
        object.listed[HeadingOf(EdeColumn::UnitCode)] = name   ? std::string(*name)
                                                        : unit ? std::to_string(*unit)
                                                               : text;
    }
}

}  // namespace

std::string UnitCell(ObjectRecord const& object) {
    auto unit = UnitsOf(object);
    auto const listed = object.listed.find(HeadingOf(EdeColumn::UnitCode));
    if (unit || listed == object.listed.end()) {
        return unit ? std::to_string(*unit) : std::string();
    }
    unit = UnitOf(listed->second, {});
    return unit ? std::to_string(*unit) : listed->second;
}

void SetUnit(EdeRow const& row, CodeTexts const& units, ObjectRecord& object) {
    std::string const text = Plain(row.TextOf(EdeColumn::UnitCode));
    if (text.find_first_not_of('-') == std::string::npos) {
        return;
    }
    auto const unit = UnitOf(text, units);
    Set(object, unit, text);
    if (!unit) {
        row.Report(EdeColumn::UnitCode, ImportLine::Effect::Note,
                   tools::Quoted(text) + " is not a unit of the standard: kept as a text");
    } else if (!standard::NameOfEnumerated(Datatype::Units, *unit) && !units.Of(*unit).empty()) {
        object.listed[UnitNameHeading] = units.Of(*unit).front();
    }
}

void SetUnit(std::string const& text, ObjectRecord& object) {
    constexpr std::string_view Numbered = "unit ";
    if (!text.empty()) {
        bool const isNumbered = text.compare(0, Numbered.size(), Numbered) == 0;
        Set(object, UnitOf(isNumbered ? text.substr(Numbered.size()) : text, {}), text);
    }
}

}  // namespace workbench
