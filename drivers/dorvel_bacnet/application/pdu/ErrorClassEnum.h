#pragma once

// The error class (ASHRAE 135 clause 18). A value from the wire may be any octet.
enum class ErrorClassEnum : int {
    Device = 0,
    Object = 1,
    Property = 2,
    Resources = 3,
    Security = 4,
    Services = 5,
    Vt = 6,
    Communication = 7,
};
