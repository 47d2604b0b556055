#include "Failure.h"

#include "ErrorNames.h"

namespace standard {

namespace {

std::string Reason(Failure const& failure) {
    switch (failure.kind) {
        case Failure::Kind::Silent:
            return "no answer";
        case Failure::Kind::Error:
            return ErrorClassText(failure.errorClass) + ": " + ErrorCodeText(failure.code);
        case Failure::Kind::Reject:
            return "reject: " + RejectReasonText(failure.code);
        case Failure::Kind::Abort:
            return "abort: " + AbortReasonText(failure.code);
        case Failure::Kind::Malformed:
            return "malformed answer";
        case Failure::Kind::Incomplete:
            return "incomplete answer";
        case Failure::Kind::Stopped:
            break;
    }
    return "stopped";
}

}  // namespace

std::string FailureText(Failure const& failure) {
    return Reason(failure) + (failure.detail.empty() ? "" : " (" + failure.detail + ")");
}

}  // namespace standard
