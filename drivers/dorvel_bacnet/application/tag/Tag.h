#pragma once

#include <vector>

#include "TagBase.h"

// One primitive tag with its data octets.
class Tag : public TagBase {
public:
    Tag() = default;
    Tag(char tagNumber, bool isClass, char valLenType, int additionalLength);
    // The length/value/type is not derived from the data: the caller gives what belongs to it.
    Tag(char tagNumber, bool isClass, char valLenType, std::vector<char> const& dataOctets,
        int additionalLength);

    // A tag whose length fields tell the size of the data: the size itself below 5, else the extended form.
    static Tag FromOctets(char tagNumber, bool isClass, std::vector<char> dataOctets);

    // Two things differ from ASHRAE 135 clause 20.2.1. A context tag number above 6 stands both in the first
    // octet, cut to its low four bits, and in an octet behind it. An extended length is always one octet, the
    // low eight bits of the additional length, so data of 254 octets and more carries a wrong length.
    std::vector<char> GetBytes() const override;

    // The value of the extended length, used when the length/value/type is 5.
    int GetAdditionalLength() const { return extendedLength; }
    void SetAdditionalLength(int value) { extendedLength = value; }

private:
    int extendedLength = 0;

public:
    // The value octets as they stand on the wire.
    std::vector<char> data;
};
