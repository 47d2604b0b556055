#pragma once

// The abort reason (ASHRAE 135 clause 18.11). A value from the wire may be any octet.
enum class AbortReasonEnum : int {
    Other = 0,
    BufferOverflow = 1,
    InvalidApduInThisState = 2,
    PreemptedByHigherPriorityTask = 3,
    SegmentationNotSupported = 4,
    SecurityError = 5,
    InsufficientSecurity = 6,
    WindowSizeOutOfRange = 7,
    ApplicationExceededReplyTime = 8,
    OutOfResources = 9,
    TsmTimeout = 10,
    ApduTooLong = 11,
};
