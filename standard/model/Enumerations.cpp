#include "Enumerations.h"

namespace standard {

namespace {

// The names of each enumeration from 0 on (clause 21); null where the standard has none.

constexpr char const* BinaryPvNames[] = {"inactive", "active"};
constexpr char const* PolarityNames[] = {"normal", "reverse"};
constexpr char const* EventStateNames[] = {"normal",     "fault",     "offnormal",
                                           "high-limit", "low-limit", "life-safety-alarm"};
constexpr char const* ReliabilityNames[] = {"no-fault-detected",
                                            "no-sensor",
                                            "over-range",
                                            "under-range",
                                            "open-loop",
                                            "shorted-loop",
                                            "no-output",
                                            "unreliable-other",
                                            "process-error",
                                            "multi-state-fault",
                                            "configuration-error",
                                            nullptr,
                                            "communication-failure",
                                            "member-fault",
                                            "monitored-object-fault",
                                            "tripped"};
constexpr char const* NotifyTypeNames[] = {"alarm", "event", "ack-notification"};
constexpr char const* ActionNames[] = {"direct", "reverse"};
constexpr char const* LightingInProgressNames[] = {"idle", "fade-active", "ramp-active", "not-controlled",
                                                   "other"};
constexpr char const* LightingTransitionNames[] = {"none", "fade", "ramp"};
constexpr char const* SegmentationNames[] = {"segmented-both", "segmented-transmit", "segmented-receive",
                                             "no-segmentation"};
constexpr char const* DeviceStatusNames[] = {"operational",       "operational-read-only",
                                             "download-required", "download-in-progress",
                                             "non-operational",   "backup-in-progress"};
constexpr char const* RestartReasonNames[] = {
    "unknown",           "coldstart",         "warmstart", "detected-power-lost", "detected-powered-off",
    "hardware-watchdog", "software-watchdog", "suspended"};

// The first 137 of BACnetEngineeringUnits; others are given by their number.
constexpr char const* UnitsNames[] = {
    "square-meters",
    "square-feet",
    "milliamperes",
    "amperes",
    "ohms",
    "volts",
    "kilovolts",
    "megavolts",
    "volt-amperes",
    "kilovolt-amperes",
    "megavolt-amperes",
    "volt-amperes-reactive",
    "kilovolt-amperes-reactive",
    "megavolt-amperes-reactive",
    "degrees-phase",
    "power-factor",
    "joules",
    "kilojoules",
    "watt-hours",
    "kilowatt-hours",
    "btus",
    "therms",
    "ton-hours",
    "joules-per-kilogram-dry-air",
    "btus-per-pound-dry-air",
    "cycles-per-hour",
    "cycles-per-minute",
    "hertz",
    "grams-of-water-per-kilogram-dry-air",
    "percent-relative-humidity",
    "millimeters",
    "meters",
    "inches",
    "feet",
    "watts-per-square-foot",
    "watts-per-square-meter",
    "lumens",
    "luxes",
    "foot-candles",
    "kilograms",
    "pounds-mass",
    "tons",
    "kilograms-per-second",
    "kilograms-per-minute",
    "kilograms-per-hour",
    "pounds-mass-per-minute",
    "pounds-mass-per-hour",
    "watts",
    "kilowatts",
    "megawatts",
    "btus-per-hour",
    "horsepower",
    "tons-refrigeration",
    "pascals",
    "kilopascals",
    "bars",
    "pounds-force-per-square-inch",
    "centimeters-of-water",
    "inches-of-water",
    "millimeters-of-mercury",
    "centimeters-of-mercury",
    "inches-of-mercury",
    "degrees-celsius",
    "degrees-kelvin",
    "degrees-fahrenheit",
    "degree-days-celsius",
    "degree-days-fahrenheit",
    "years",
    "months",
    "weeks",
    "days",
    "hours",
    "minutes",
    "seconds",
    "meters-per-second",
    "kilometers-per-hour",
    "feet-per-second",
    "feet-per-minute",
    "miles-per-hour",
    "cubic-feet",
    "cubic-meters",
    "imperial-gallons",
    "liters",
    "us-gallons",
    "cubic-feet-per-minute",
    "cubic-meters-per-second",
    "imperial-gallons-per-minute",
    "liters-per-second",
    "liters-per-minute",
    "us-gallons-per-minute",
    "degrees-angular",
    "degrees-celsius-per-hour",
    "degrees-celsius-per-minute",
    "degrees-fahrenheit-per-hour",
    "degrees-fahrenheit-per-minute",
    "no-units",
    "parts-per-million",
    "parts-per-billion",
    "percent",
    "percent-per-second",
    "per-minute",
    "per-second",
    "psi-per-degree-fahrenheit",
    "radians",
    "revolutions-per-minute",
    "currency1",
    "currency2",
    "currency3",
    "currency4",
    "currency5",
    "currency6",
    "currency7",
    "currency8",
    "currency9",
    "currency10",
    "square-inches",
    "square-centimeters",
    "btus-per-pound",
    "centimeters",
    "pounds-mass-per-second",
    "delta-degrees-fahrenheit",
    "delta-degrees-kelvin",
    "kilohms",
    "megohms",
    "millivolts",
    "kilojoules-per-kilogram",
    "megajoules",
    "joules-per-degree-kelvin",
    "joules-per-kilogram-degree-kelvin",
    "kilohertz",
    "megahertz",
    "per-hour",
    "milliwatts",
    "hectopascals",
    "millibars",
    "cubic-meters-per-hour",
    "liters-per-hour",
};

struct Enumeration {
    Datatype datatype;
    char const* const* names;
    std::uint32_t count;
};

template <std::uint32_t count>
constexpr Enumeration MakeEnumeration(Datatype datatype, char const* const (&names)[count]) {
    return {datatype, names, count};
}

constexpr Enumeration Enumerations[] = {
    MakeEnumeration(Datatype::BinaryPv, BinaryPvNames),
    MakeEnumeration(Datatype::Polarity, PolarityNames),
    MakeEnumeration(Datatype::EventState, EventStateNames),
    MakeEnumeration(Datatype::Reliability, ReliabilityNames),
    MakeEnumeration(Datatype::Units, UnitsNames),
    MakeEnumeration(Datatype::NotifyType, NotifyTypeNames),
    MakeEnumeration(Datatype::Action, ActionNames),
    MakeEnumeration(Datatype::LightingInProgress, LightingInProgressNames),
    MakeEnumeration(Datatype::LightingTransition, LightingTransitionNames),
    MakeEnumeration(Datatype::Segmentation, SegmentationNames),
    MakeEnumeration(Datatype::DeviceStatus, DeviceStatusNames),
    MakeEnumeration(Datatype::RestartReason, RestartReasonNames),
};

Enumeration const* Find(Datatype datatype) {
    for (Enumeration const& row : Enumerations) {
        if (row.datatype == datatype) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

bool IsEnumeration(Datatype datatype) {
    return Find(datatype) != nullptr;
}

bool IsEnumerated(Datatype datatype, std::uint32_t number) {
    Enumeration const* const row = Find(datatype);
    return datatype == Datatype::Units || (row && number < row->count && row->names[number]);
}

std::optional<std::uint32_t> EnumeratedOfName(Datatype datatype, std::string_view name) {
    Enumeration const* const row = Find(datatype);
    for (std::uint32_t i = 0; row && i < row->count; ++i) {
        if (row->names[i] && row->names[i] == name) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace standard
