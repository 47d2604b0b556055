#include "PropertyId.h"

#include <algorithm>
#include <cctype>

namespace standard {

namespace {

struct Row {
    char const* name;
    PropertyId id;
};

constexpr Row Rows[] = {
#define BACNET_PROPERTY(name, number) {#name, PropertyId::name},
    BACNET_PROPERTIES(BACNET_PROPERTY)
#undef BACNET_PROPERTY
};

std::string InSmallLetters(std::string_view name) {
    std::string small(name);
    std::transform(small.begin(), small.end(), small.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return small;
}

}  // namespace

std::optional<PropertyId> PropertyOfName(std::string_view name) {
    for (Row const& row : Rows) {
        if (InSmallLetters(row.name) == name) {
            return row.id;
        }
    }
    return std::nullopt;
}

std::string NameOf(PropertyId id) {
    for (Row const& row : Rows) {
        if (row.id == id) {
            return InSmallLetters(row.name);
        }
    }
    return std::to_string(static_cast<std::uint32_t>(id));
}

}  // namespace standard
