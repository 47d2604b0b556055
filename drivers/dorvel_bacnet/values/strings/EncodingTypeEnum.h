#pragma once

// The character set of a character string (ASHRAE 135 clause 20.2.9). The driver keeps the number, whatever
// it is, and converts no text.
enum class EncodingTypeEnum : int {
    Utf8 = 0,
    Dbcs = 1,
    Jis_X_0208 = 2,
    Ucs4 = 3,
    Ucs2 = 4,
    Iso_8859_1 = 5,
    // Not a character set of the standard: marks a text that the driver made from a schedule.
    Schedule = 6,
};
