#include "ReferenceWords.h"

#include <cstddef>
#include <cstdint>

#include "ObjectNames.h"
#include "OctetVector.h"
#include "PropertyNames.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::ObjectId;

enum Tag : std::uint8_t { Object = 0, Property = 1, Index = 2, Device = 3 };

// The number of a primitive value with this context tag.
std::optional<std::uint32_t> NumberOf(Datum const& datum, std::uint8_t tag) {
    std::size_t const size = datum.octets.size();
    if (datum.kind != DatumKind::Unknown || !datum.isContext || datum.tag != tag || size < 1 || size > 4) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    for (char const octet : datum.octets) {
        number = number << 8 | standard::OctetValue(octet);
    }
    return number;
}

// Takes that value if it is the next one.
std::optional<std::uint32_t> Take(std::vector<Datum> const& values, std::size_t& at, std::uint8_t tag) {
    auto const number = at < values.size() ? NumberOf(values[at], tag) : std::nullopt;
    at += number ? 1 : 0;
    return number;
}

std::optional<std::string> OneReference(std::vector<Datum> const& values, std::size_t& at) {
    auto const object = Take(values, at, Object);
    auto const property = object ? Take(values, at, Property) : std::nullopt;
    if (!property) {
        return std::nullopt;
    }
    auto const index = Take(values, at, Index);
    auto const device = Take(values, at, Device);
    return standard::ObjectText(ObjectId::Of(*object)) + " " + standard::PropertyText(*property) +
           (index ? "[" + std::to_string(*index) + "]" : "") +
           (device ? " of " + standard::ObjectText(ObjectId::Of(*device)) : "");
}

}  // namespace

std::optional<std::string> ReferenceWords(std::vector<Datum> const& values) {
    bool const isSetpoint =
        values.size() == 1 && values[0].kind == DatumKind::Constructed && values[0].tag == Object;
    std::vector<Datum> const& parts = isSetpoint ? values[0].children : values;
    std::string text;
    for (std::size_t at = 0; at < parts.size();) {
        auto const reference = OneReference(parts, at);
        if (!reference) {
            return std::nullopt;
        }
        text += (text.empty() ? "" : ", ") + *reference;
    }
    return text.empty() ? std::nullopt : std::optional(text);
}

}  // namespace workbench
