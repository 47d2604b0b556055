#include "ObjectTypeRows.h"

// The value objects that hold no number: clauses 12.37 to 12.45.
namespace standard::rows {

namespace {

constexpr PropertyRow kPriorityArray = optional(P::Priority_Array, D::Priority, nullptr, Shape::Array);

constexpr PropertyRow kBitString[] = {
    required(P::Present_Value, D::BitString, "'00000000'"),
    optional(P::Bit_Text, D::CharacterString, nullptr, Shape::Array),
    kPriorityArray,
    optional(P::Relinquish_Default, D::BitString),
};

constexpr PropertyRow kOctetString[] = {
    required(P::Present_Value, D::OctetString, "''"),
    kPriorityArray,
    optional(P::Relinquish_Default, D::OctetString),
};

constexpr PropertyRow kDate[] = {
    required(P::Present_Value, D::Date, "clock()"),
    kPriorityArray,
    optional(P::Relinquish_Default, D::Date),
};

constexpr PropertyRow kTime[] = {
    required(P::Present_Value, D::Time, "clock()"),
    kPriorityArray,
    optional(P::Relinquish_Default, D::Time),
};

constexpr PropertyRow kDateTime[] = {
    required(P::Present_Value, D::DateTime, "clock()"),
    optional(P::Is_UTC, D::Boolean, "false"),
    kPriorityArray,
    optional(P::Relinquish_Default, D::DateTime),
};

constexpr ObjectType kTypes[] = {
    {39, "bit_string_value", {group(kBitString), group(kValueState), group(kReporting), {}}},
    {42, "date_value", {group(kDate), group(kValueState), group(kReporting), {}}},
    {44, "datetime_value", {group(kDateTime), group(kValueState), group(kReporting), {}}},
    {47, "octet_string_value", {group(kOctetString), group(kValueState), group(kReporting), {}}},
    {50, "time_value", {group(kTime), group(kValueState), group(kReporting), {}}},
};

}  // namespace

ObjectTypes valueTypes() {
    return {kTypes, std::size(kTypes)};
}

}  // namespace standard::rows
