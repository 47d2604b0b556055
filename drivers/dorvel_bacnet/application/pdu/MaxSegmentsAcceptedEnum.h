#pragma once

// The max-segments-accepted field of a confirmed request (ASHRAE 135 clause 20.1.2.4): three bits when
// written. A parsed request holds the upper four bits of its octet, so values up to 15 occur.
enum class MaxSegmentsAcceptedEnum : int {
    Unspecified = 0,
    Segments2 = 1,
    Segments4 = 2,
    Segments8 = 3,
    Segments16 = 4,
    Segments32 = 5,
    Segments64 = 6,
    MoreThan64 = 7,
};
