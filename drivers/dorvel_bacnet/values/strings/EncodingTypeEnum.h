#pragma once

// The character set octet of a character string, ASHRAE 135 clause 20.2.9. It is carried along, whatever
// its number; no text is converted.
enum class EncodingTypeEnum : int {
    Utf8 = 0,
    Dbcs = 1,
    Jis_X_0208 = 2,
    Ucs4 = 3,
    Ucs2 = 4,
    Iso_8859_1 = 5,
    // No character set of the standard: marks a text that the driver made of a schedule.
    Schedule = 6,
};
