#include "Enumerations.h"

#include "UnitNames.h"

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
    MakeEnumeration(Datatype::Units, UnitNames),
    MakeEnumeration(Datatype::NotifyType, NotifyTypeNames),
    MakeEnumeration(Datatype::Action, ActionNames),
    MakeEnumeration(Datatype::LightingInProgress, LightingInProgressNames),
    MakeEnumeration(Datatype::LightingTransition, LightingTransitionNames),
    MakeEnumeration(Datatype::Segmentation, SegmentationNames),
    MakeEnumeration(Datatype::DeviceStatus, DeviceStatusNames),
    MakeEnumeration(Datatype::RestartReason, RestartReasonNames),
};

// Numbers that protocol revision 14 does not have, or that are far from the others.
struct LaterName {
    Datatype datatype;
    std::uint32_t number;
    char const* name;
};

constexpr LaterName LaterNames[] = {
    {Datatype::Reliability, 16, "lamp-failure"},
    {Datatype::Reliability, 17, "activation-failure"},
    {Datatype::Reliability, 18, "renew-dhcp-failure"},
    {Datatype::Reliability, 19, "renew-fd-registration-failure"},
    {Datatype::Reliability, 20, "restart-auto-negotiation-failure"},
    {Datatype::Reliability, 21, "restart-failure"},
    {Datatype::Reliability, 22, "proprietary-command-failure"},
    {Datatype::Reliability, 23, "faults-listed"},
    {Datatype::Reliability, 24, "referenced-object-fault"},
    {Datatype::RestartReason, 8, "activate-changes"},
    {Datatype::Units, 47808, "standard-cubic-feet-per-day"},
    {Datatype::Units, 47809, "million-standard-cubic-feet-per-day"},
    {Datatype::Units, 47810, "thousand-cubic-feet-per-day"},
    {Datatype::Units, 47811, "thousand-standard-cubic-feet-per-day"},
    {Datatype::Units, 47812, "pounds-mass-per-day"},
    {Datatype::Units, 47814, "millirems"},
    {Datatype::Units, 47815, "millirems-per-hour"},
    {Datatype::Units, 47816, "degrees-lovibond"},
    {Datatype::Units, 47817, "alcohol-by-volume"},
    {Datatype::Units, 47818, "international-bittering-units"},
    {Datatype::Units, 47819, "european-bitterness-units"},
    {Datatype::Units, 47820, "degrees-plato"},
    {Datatype::Units, 47821, "specific-gravity"},
    {Datatype::Units, 47822, "european-brewing-convention"},
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
    for (LaterName const& later : LaterNames) {
        if (datatype == Datatype::Units && later.datatype == datatype && later.name == name) {
            return later.number;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> NameOfEnumerated(Datatype datatype, std::uint32_t number) {
    Enumeration const* const row = Find(datatype);
    if (row && number < row->count && row->names[number]) {
        return row->names[number];
    }
    for (LaterName const& later : LaterNames) {
        if (later.datatype == datatype && later.number == number) {
            return later.name;
        }
    }
    return std::nullopt;
}

}  // namespace standard
