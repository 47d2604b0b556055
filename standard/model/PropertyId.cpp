#include "PropertyId.h"

#include <algorithm>
#include <cctype>

namespace standard {

namespace {

struct Row {
    char const* name;
    PropertyId id;
};

constexpr Row kRows[] = {
#define BACNET_PROPERTY(name, number) {#name, PropertyId::name},
    BACNET_PROPERTIES(BACNET_PROPERTY)
#undef BACNET_PROPERTY
};

std::string inSmallLetters(std::string_view name) {
    std::string small(name);
    std::transform(small.begin(), small.end(), small.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return small;
}

}  // namespace

std::optional<PropertyId> propertyOfName(std::string_view name) {
    for (Row const& row : kRows) {
        if (inSmallLetters(row.name) == name) {
            return row.id;
        }
    }
    return std::nullopt;
}

std::string nameOf(PropertyId id) {
    for (Row const& row : kRows) {
        if (row.id == id) {
            return inSmallLetters(row.name);
        }
    }
    return std::to_string(static_cast<std::uint32_t>(id));
}

}  // namespace standard
