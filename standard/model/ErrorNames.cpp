#include "ErrorNames.h"

#include <cstddef>

namespace standard {

namespace {

// The names from 0 on; null where the standard has none.

constexpr char const* ErrorClasses[] = {
    "device", "object", "property", "resources", "security", "services", "vt", "communication",
};

constexpr char const* RejectReasons[] = {
    "other",
    "buffer-overflow",
    "inconsistent-parameters",
    "invalid-parameter-data-type",
    "invalid-tag",
    "missing-required-parameter",
    "parameter-out-of-range",
    "too-many-arguments",
    "undefined-enumeration",
    "unrecognized-service",
};

constexpr char const* AbortReasons[] = {
    "other",
    "buffer-overflow",
    "invalid-apdu-in-this-state",
    "preempted-by-higher-priority-task",
    "segmentation-not-supported",
    "security-error",
    "insufficient-security",
    "window-size-out-of-range",
    "application-exceeded-reply-time",
    "out-of-resources",
    "tsm-timeout",
    "apdu-too-long",
};

constexpr char const* ErrorCodes[] = {
    "other",
    nullptr,
    "configuration-in-progress",
    "device-busy",
    "dynamic-creation-not-supported",
    "file-access-denied",
    "incompatible-security-levels",
    "inconsistent-parameters",
    "inconsistent-selection-criterion",
    "invalid-data-type",
    "invalid-file-access-method",
    "invalid-file-start-position",
    "invalid-operator-name",
    "invalid-parameter-data-type",
    "invalid-timestamp",
    "key-generation-error",
    "missing-required-parameter",
    "no-objects-of-specified-type",
    "no-space-for-object",
    "no-space-to-add-list-element",
    "no-space-to-write-property",
    "no-vt-sessions-available",
    "property-is-not-a-list",
    "object-deletion-not-permitted",
    "object-identifier-already-exists",
    "operational-problem",
    "password-failure",
    "read-access-denied",
    "security-not-supported",
    "service-request-denied",
    "timeout",
    "unknown-object",
    "unknown-property",
    nullptr,
    "unknown-vt-class",
    "unknown-vt-session",
    "unsupported-object-type",
    "value-out-of-range",
    "vt-session-already-closed",
    "vt-session-termination-failure",
    "write-access-denied",
    "character-set-not-supported",
    "invalid-array-index",
    "cov-subscription-failed",
    "not-cov-property",
    "optional-functionality-not-supported",
    "invalid-configuration-data",
    "datatype-not-supported",
    "duplicate-name",
    "duplicate-object-id",
    "property-is-not-an-array",
    "abort-buffer-overflow",
    "abort-invalid-apdu-in-this-state",
    "abort-preempted-by-higher-priority-task",
    "abort-segmentation-not-supported",
    "abort-proprietary",
    "abort-other",
    "invalid-tag",
    "network-down",
    "reject-buffer-overflow",
    "reject-inconsistent-parameters",
    "reject-invalid-parameter-data-type",
    "reject-invalid-tag",
    "reject-missing-required-parameter",
    "reject-parameter-out-of-range",
    "reject-too-many-arguments",
    "reject-undefined-enumeration",
    "reject-unrecognized-service",
    "reject-proprietary",
    "reject-other",
    "unknown-device",
    "unknown-route",
    "value-not-initialized",
    "invalid-event-state",
    "no-alarm-configured",
    "log-buffer-full",
    "logged-value-purged",
    "no-property-specified",
    "not-configured-for-triggered-logging",
    "unknown-subscription",
    "parameter-out-of-range",
    "list-element-not-found",
    "busy",
    "communication-disabled",
    "success",
    "access-denied",
    "bad-destination-address",
    "bad-destination-device-id",
    "bad-signature",
    "bad-source-address",
    "bad-timestamp",
    "cannot-use-key",
    "cannot-verify-message-id",
    "correct-key-revision",
    "destination-device-id-required",
    "duplicate-message",
    "encryption-not-configured",
    "encryption-required",
    "incorrect-key",
    "invalid-key-data",
    "key-update-in-progress",
    "malformed-message",
    "not-key-server",
    "security-not-configured",
    "source-security-required",
    "too-many-keys",
    "unknown-authentication-type",
    "unknown-key",
    "unknown-key-revision",
    "unknown-source-message",
    "not-router-to-dnet",
    "router-busy",
    "unknown-network-message",
    "message-too-long",
    "security-error",
    "addressing-error",
    "write-bdt-failed",
    "read-bdt-failed",
    "register-foreign-device-failed",
    "read-fdt-failed",
    "delete-fdt-entry-failed",
    "distribute-broadcast-failed",
    "unknown-file-size",
    "abort-apdu-too-long",
    "abort-application-exceeded-reply-time",
    "abort-out-of-resources",
    "abort-tsm-timeout",
    "abort-window-size-out-of-range",
    "file-full",
    "inconsistent-configuration",
    "inconsistent-object-type",
    "internal-error",
    "not-configured",
    "out-of-memory",
    "value-too-long",
    "abort-insufficient-security",
    "abort-security-error",
    "duplicate-entry",
    "invalid-value-in-this-state",
};

template <std::size_t count>
std::string Text(char const* const (&names)[count], char const* unknown, std::uint32_t number) {
    return number < count && names[number] ? names[number] : unknown + std::to_string(number);
}

}  // namespace

std::string ErrorClassText(std::uint32_t errorClass) {
    return Text(ErrorClasses, "class ", errorClass);
}

std::string ErrorCodeText(std::uint32_t errorCode) {
    return Text(ErrorCodes, "code ", errorCode);
}

std::string RejectReasonText(std::uint32_t reason) {
    return Text(RejectReasons, "reason ", reason);
}

std::string AbortReasonText(std::uint32_t reason) {
    return Text(AbortReasons, "reason ", reason);
}

}  // namespace standard
