#include "ObjectNames.h"

#include <iterator>

#include "PropertyNames.h"

namespace standard {

namespace {

// From 0 on.
constexpr char const* ObjectTypeNames[] = {
    "analog-input",
    "analog-output",
    "analog-value",
    "binary-input",
    "binary-output",
    "binary-value",
    "calendar",
    "command",
    "device",
    "event-enrollment",
    "file",
    "group",
    "loop",
    "multi-state-input",
    "multi-state-output",
    "notification-class",
    "program",
    "schedule",
    "averaging",
    "multi-state-value",
    "trend-log",
    "life-safety-point",
    "life-safety-zone",
    "accumulator",
    "pulse-converter",
    "event-log",
    "global-group",
    "trend-log-multiple",
    "load-control",
    "structured-view",
    "access-door",
    "timer",
    "access-credential",
    "access-point",
    "access-rights",
    "access-user",
    "access-zone",
    "credential-data-input",
    "network-security",
    "bitstring-value",
    "characterstring-value",
    "datepattern-value",
    "date-value",
    "datetimepattern-value",
    "datetime-value",
    "integer-value",
    "large-analog-value",
    "octetstring-value",
    "positive-integer-value",
    "timepattern-value",
    "time-value",
    "notification-forwarder",
    "alert-enrollment",
    "channel",
    "lighting-output",
    "binary-lighting-output",
    "network-port",
    "elevator-group",
    "escalator",
    "lift",
    "staging",
    "audit-log",
    "audit-reporter",
    "color",
    "color-temperature",
};

}  // namespace

std::string ObjectTypeText(std::uint16_t type) {
    return type < std::size(ObjectTypeNames) ? ObjectTypeNames[type] : "object type " + std::to_string(type);
}

std::string ObjectText(ObjectId const& object) {
    return ObjectTypeText(object.type) + ' ' + std::to_string(object.instance);
}

std::string ReferenceText(PropertyReference const& reference) {
    std::string const index = reference.index ? '[' + std::to_string(*reference.index) + ']' : "";
    return ObjectText(reference.object) + ' ' + PropertyText(reference.property) + index;
}

}  // namespace standard
