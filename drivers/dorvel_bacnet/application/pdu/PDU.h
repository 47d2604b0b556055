#pragma once

#include <vector>

#include "AnswerStore.h"
#include "PduTypeEnum.h"

// An application protocol data unit (ASHRAE 135 clause 20.1): the base of all PDU classes.
//
// operator== and Equals differ. operator== calls the virtual Compare, which each class defines for itself;
// ErrorPdu, RejectPdu and AbortPdu compare as equal to any PDU. Equals compares the contents of these three;
// for any other PDU it is false, even for an object and itself.
class PDU : public PartOfAnswer {
public:
    virtual ~PDU() = default;

    // 0 for equal; otherwise the sign gives the order. By default the difference of the PDU types. Derived
    // classes throw std::bad_cast for an equal type of another class.
    virtual int Compare(PDU& other) const;

    // False by default.
    virtual bool Equals(PDU& other) const;

    virtual PduTypeEnum PduType() const = 0;

    // The whole APDU. The body of the base returns no octets.
    virtual std::vector<char> GetBytes() const = 0;

    // True if the virtual Compare returns 0.
    bool operator==(PDU& other) const { return Compare(other) == 0; }
};
