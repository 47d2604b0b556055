#pragma once

#include <vector>

#include "PduTypeEnum.h"

// An application protocol data unit (ASHRAE 135 clause 20.1): the base of all that an APDU can be.
//
// operator== and Equals are two different questions. operator== asks the virtual Compare, which each class
// defines in its own terms (the refusals call everything equal). Equals is a test of contents in the
// refusals alone; for all other PDUs it is false, even for an object and itself.
class PDU {
public:
    virtual ~PDU() = default;

    // 0 for equal; otherwise the sign tells the order. The base compares the PDU types by subtraction.
    // Where the types are equal but the classes are not, the derived classes throw std::bad_cast.
    virtual int Compare(PDU& other) const;

    // The base always answers false.
    virtual bool Equals(PDU& other) const;

    virtual PduTypeEnum PduType() const = 0;

    // The whole APDU as it goes on the wire. The base's body gives no octets.
    virtual std::vector<char> GetBytes() const = 0;

    // True exactly when the virtual Compare gives 0.
    bool operator==(PDU& other) const { return Compare(other) == 0; }
};
