#include "DeviceValue.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace workbench {

namespace {

bool HasWildcard(std::array<std::uint8_t, 4> const& fields, std::size_t count) {
    return std::any_of(fields.begin(), fields.begin() + static_cast<std::ptrdiff_t>(count),
                       [](std::uint8_t field) { return field == standard::Unspecified; });
}

// NaN equals NaN: the device has the same value.
bool SameNumber(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

}  // namespace

char const* KindName(DeviceKind kind) {
    static constexpr char const* Names[] = {
        "Null",   "Boolean",      "Unsigned",         "Signed",     "Real",
        "Double", "Octet String", "Character String", "Bit String", "Enumerated",
        "Date",   "Time",         "Date and Time",    "schedule",   "value of another datatype"};
    return Names[static_cast<std::size_t>(kind)];
}

bool operator==(DeviceValue const& left, DeviceValue const& right) {
    auto const rest = [](DeviceValue const& v) {
        return std::tie(v.kind, v.number, v.integer, v.text, v.date, v.time, v.lost);
    };
    return rest(left) == rest(right) && SameNumber(left.real, right.real) &&
           (left.kind != DeviceKind::Other || left.shown == right.shown);
}

bool HasUnspecified(DeviceValue const& value) {
    switch (value.kind) {
        case DeviceKind::Date:
            return HasWildcard(value.date, 3);
        case DeviceKind::Time:
            return HasWildcard(value.time, 4);
        case DeviceKind::DateTime:
            return HasWildcard(value.date, 3) || HasWildcard(value.time, 4);
        default:
            return false;
    }
}

}  // namespace workbench
