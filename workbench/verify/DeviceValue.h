#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "Calendar.h"

namespace workbench {

// The kinds of values that a configured property can have in a device. Other has no comparison: a value of
// any other datatype, or several values where one is expected.
enum class DeviceKind {
    Null,
    Boolean,
    Unsigned,
    Signed,
    Real,
    Double,
    OctetString,
    CharacterString,
    BitString,
    Enumerated,
    Date,
    Time,
    DateTime,
    Schedule,
    Other
};

// "Unsigned", "Real", "Date and Time"...
char const* KindName(DeviceKind kind);

// The value of a property as the device answered it, by the standard.
struct DeviceValue {
    DeviceKind kind = DeviceKind::Other;
    std::uint64_t number = 0;  // of Boolean (0 or 1), Unsigned and Enumerated
    std::int64_t integer = 0;  // of Signed
    double real = 0;           // of Real and Double
    std::string text;          // of a CharacterString as UTF-8, of an OctetString in hexadecimal, of a
                               // BitString as "0101", of a Schedule by the grammar of docs/schedules.md
    standard::CalendarDate date{};
    standard::TimeOfDay time{};
    std::string lost;   // of a Schedule: what its text cannot have; empty for nothing
    std::string shown;  // for people: enumerations and units by name, dates by ISO 8601
};

bool operator==(DeviceValue const& left, DeviceValue const& right);
inline bool operator!=(DeviceValue const& left, DeviceValue const& right) {
    return !(left == right);
}

// Whether a Date, a Time or a Date and Time has a part that is not specified.
bool HasUnspecified(DeviceValue const& value);

// Why a property was not read.
struct ReadProblem {
    enum class Kind { Silent, Error, Reject, Abort, Malformed };

    Kind kind = Kind::Silent;
    std::uint32_t errorClass = 0;
    std::uint32_t errorCode = 0;
    std::string text;  // in words, such as "object: unknown-object"
};

// One read of one property.
struct DeviceReading {
    std::optional<DeviceValue> value;
    std::optional<ReadProblem> problem;  // present without a value
    // From the request to its answer; of a Silent one to an answer that came too late, 0 if none came.
    std::chrono::milliseconds elapsed{0};
};

}  // namespace workbench
