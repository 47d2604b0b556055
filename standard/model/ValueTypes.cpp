#include "ObjectTypeRows.h"

// The value objects without a numeric value: clauses 12.37 to 12.45.
namespace standard::rows {

namespace {

constexpr PropertyRow PriorityArrayRows = Optional(P::Priority_Array, D::Priority, nullptr, Shape::Array);

constexpr PropertyRow BitStringRows[] = {
    Required(P::Present_Value, D::BitString, "'00000000'"),
    Optional(P::Bit_Text, D::CharacterString, nullptr, Shape::Array),
    PriorityArrayRows,
    Optional(P::Relinquish_Default, D::BitString),
};

constexpr PropertyRow OctetStringRows[] = {
    Required(P::Present_Value, D::OctetString, "''"),
    PriorityArrayRows,
    Optional(P::Relinquish_Default, D::OctetString),
};

constexpr PropertyRow DateRows[] = {
    Required(P::Present_Value, D::Date, "clock()"),
    PriorityArrayRows,
    Optional(P::Relinquish_Default, D::Date),
};

constexpr PropertyRow TimeRows[] = {
    Required(P::Present_Value, D::Time, "clock()"),
    PriorityArrayRows,
    Optional(P::Relinquish_Default, D::Time),
};

constexpr PropertyRow DateTimeRows[] = {
    Required(P::Present_Value, D::DateTime, "clock()"),
    Optional(P::Is_UTC, D::Boolean, "false"),
    PriorityArrayRows,
    Optional(P::Relinquish_Default, D::DateTime),
};

constexpr ObjectType Types[] = {
    {39, "bit_string_value", {Group(BitStringRows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {42, "date_value", {Group(DateRows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {44, "datetime_value", {Group(DateTimeRows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {47, "octet_string_value", {Group(OctetStringRows), Group(ValueStateRows), Group(ReportingRows), {}}},
    {50, "time_value", {Group(TimeRows), Group(ValueStateRows), Group(ReportingRows), {}}},
};

}  // namespace

ObjectTypes ValueTypes() {
    return {Types, std::size(Types)};
}

}  // namespace standard::rows
