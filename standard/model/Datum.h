#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Calendar.h"
#include "ObjectId.h"

namespace standard {

enum class DatumKind {
    Null,
    Boolean,
    Unsigned,
    Signed,
    Real,
    Double,
    OctetString,
    CharacterString,
    BitString,
    Enumerated,
    Date,
    Time,
    ObjectIdentifier,
    // What an opening and a closing tag enclose.
    Constructed,
    // A primitive value whose datatype its tag does not state (a context tag) or that is not one of clause
    // 20.2: its contents octets.
    Unknown
};

// A value as a device sent it (clause 20.2). Values that are equal have equal members.
struct Datum {
    // Constructed values within one another; one that is deeper is Unknown. So a value can be copied,
    // printed and destroyed with a short call stack.
    static constexpr unsigned DeepestNesting = 16;

    DatumKind kind = DatumKind::Null;
    std::uint8_t tag = 0;    // the number of its application or context tag
    bool isContext = false;  // always true for Constructed

    // Boolean (0 or 1), Unsigned, Enumerated, ObjectIdentifier (encoded); Signed as two's complement.
    std::uint64_t number = 0;
    double real = 0;                         // Real, Double
    std::array<std::uint8_t, 4> calendar{};  // Date (CalendarDate), Time (TimeOfDay)
    std::string text;                        // CharacterString in UTF-8; BitString as "0101", first bit first
    std::vector<char> octets;                // OctetString; the contents octets of Unknown
    std::vector<Datum> children;             // Constructed

    std::int64_t Signed() const { return static_cast<std::int64_t>(number); }
    ObjectId Object() const { return ObjectId::Of(static_cast<std::uint32_t>(number)); }
};

// A NaN equals a NaN of the same sign.
bool operator==(Datum const& left, Datum const& right);
inline bool operator!=(Datum const& left, Datum const& right) {
    return !(left == right);
}

}  // namespace standard
