#pragma once

#include <cstdint>

namespace standard {

// The reasons for which a confirmed request gets no ack. A service throws one of the three classes, and the
// answer is the PDU of the same name.

// BACnetRejectReason, clause 18.9
enum class RejectReason : std::uint8_t {
    InvalidParameterDataType = 3,
    InvalidTag = 4,
    MissingRequiredParameter = 5,
    ParameterOutOfRange = 6,
    TooManyArguments = 7,
    UnrecognizedService = 9
};

// BACnetAbortReason, clause 18.10
enum class AbortReason : std::uint8_t {
    BufferOverflow = 1,
    SegmentationNotSupported = 4,
    WindowSizeOutOfRange = 7,
    OutOfResources = 9,
    ApduTooLong = 11
};

// Error-Class and Error-Code, clause 18
enum class ErrorClass : std::uint8_t { Object = 1, Property = 2 };
enum class ErrorCode : std::uint8_t {
    InvalidDataType = 9,
    UnknownObject = 31,
    UnknownProperty = 32,
    ValueOutOfRange = 37,
    WriteAccessDenied = 40,
    CharacterSetNotSupported = 41,
    InvalidArrayIndex = 42,
    PropertyIsNotAnArray = 50
};

// A syntax error in the request (clause 5.4). No part of the request was carried out.
struct Reject {
    RejectReason reason;
};

// The transaction ends without a result.
struct Abort {
    AbortReason reason;
};

// The service was understood and failed.
struct ServiceError {
    ErrorClass errorClass;
    ErrorCode errorCode;
};

}  // namespace standard
