#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CsvText.h"

namespace workbench {

// The columns of layout 2.3, in their order. Layout 2.2 has no NotificationClass.
enum class EdeColumn {
    Keyname,
    DeviceInstance,
    ObjectName,
    ObjectType,
    ObjectInstance,
    Description,
    Default,
    Minimum,
    Maximum,
    Settable,
    SupportsCov,
    HighLimit,
    LowLimit,
    StateTextReference,
    UnitCode,
    VendorAddress,
    NotificationClass
};
constexpr std::size_t EdeColumnCount = 17;

// The heading as layout 2.3 has it, such as "device obj.-instance".
char const* HeadingOf(EdeColumn column);

// The text in lower case, without anything but letters and digits: what headings and names are compared by.
std::string LettersOf(std::string_view text);

// Which field of a row is which column.
struct EdeLayout {
    std::array<std::optional<std::size_t>, EdeColumnCount> fields;
    // The fields with the texts of states, for lists that have these in the row.
    struct StateField {
        std::size_t state;  // from 1
        std::size_t field;
    };
    std::vector<StateField> stateTexts;
    // Fields whose headings are empty or not known. These and the texts of states are in the order of the
    // row.
    std::vector<std::size_t> unknownFields;
    // By field: the heading as the file has it; those of layout 2.3 by position.
    std::vector<std::string> headings;

    // The columns in the order of layout 2.3.
    static EdeLayout ByPosition();
    // By the headings of a row, in any order and spelling. No value if the row is not one of headings: the
    // device, the object type and the object's instance have to be among them.
    static std::optional<EdeLayout> ByHeading(CsvRow const& row);

    // Whether the text is one of the headings of layout 2.3.
    static bool IsHeading(std::string const& text);

    std::optional<std::size_t> FieldOf(EdeColumn column) const {
        return fields[static_cast<std::size_t>(column)];
    }
};

}  // namespace workbench
