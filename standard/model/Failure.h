#pragma once

#include <cstdint>
#include <string>

namespace standard {

// Why a request, or one property of it, has no value.
struct Failure {
    enum class Kind {
        Silent,      // no answer within the time-out and all retries
        Error,       // errorClass and code
        Reject,      // code: BACnetRejectReason
        Abort,       // code: BACnetAbortReason
        Malformed,   // an answer that is not one to the request, or that is longer than the limits
        Incomplete,  // the segments of the answer stopped before its end
        Stopped      // the caller ended it
    };
    Kind kind = Kind::Silent;
    std::uint32_t errorClass = 0;
    std::uint32_t code = 0;
    std::string detail;  // in words, where kind and numbers do not say everything
};

inline bool operator==(Failure const& left, Failure const& right) {
    return left.kind == right.kind && left.errorClass == right.errorClass && left.code == right.code &&
           left.detail == right.detail;
}

// "object: unknown-object", "reject: unrecognized-service", "abort: buffer-overflow", "no answer", "malformed
// answer", "incomplete answer", "stopped". The detail follows in parentheses.
std::string FailureText(Failure const& failure);

}  // namespace standard
