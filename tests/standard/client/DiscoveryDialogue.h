#pragma once

#include "Endpoint.h"

// The stations and the datagrams that the tests of the discovery share.
namespace test {

constexpr standard::Endpoint Everyone{0x0A0000FF, 47808};
constexpr standard::Endpoint Router{0x0A000003, 47808};

// I-Am of device 7, vendor 15, and of device 9, which is station 11 of network 5.
inline constexpr char IAm7[] = "81 0A 00 14 01 00 10 00 C4 02 00 00 07 22 05 C4 91 00 21 0F";
inline constexpr char IAm9OfNetwork5[] =
    "81 0B 00 17 01 08 00 05 01 0B 10 00 C4 02 00 00 09 21 CE 91 03 21 0F";
inline constexpr char IAmRouterTo5[] = "81 0B 00 09 01 80 01 00 05";

}  // namespace test
