#pragma once

#include <utility>
#include <vector>

#include "TagBase.h"

// One primitive tag with its data octets (ASHRAE 135 clause 20.2.1). A value class: copies share nothing.
class Tag : public TagBase {
public:
    Tag() = default;
    Tag(Tag const&) = default;
    Tag(Tag&&) = default;
    Tag& operator=(Tag const&) = default;
    Tag& operator=(Tag&&) = default;
    Tag(char tagNumber, bool isClass, char valLenType, int additionalLength);
    // The length/value/type is not derived from the data: the caller passes the one that belongs to it.
    Tag(char tagNumber, bool isClass, char valLenType, std::vector<char> const& dataOctets,
        int additionalLength);
    ~Tag() override { AnswerStore::LeaveOctets(std::move(data)); }

    // A tag with the length fields for its data: the size itself below 5, otherwise the extended form.
    static Tag FromOctets(char tagNumber, bool isClass, std::vector<char> dataOctets);

    // The octets of the tag. Departures from ASHRAE 135: a context tag number above 6 is in the first octet,
    // cut to four bits, and in a second octet as well (clause 20.2.1.2 has the second one from 15 on). An
    // extended length is always one octet, the low eight bits of the additional length, so data of 254 octets
    // or more has a wrong length (clause 20.2.1.3.1). Installed systems rely on this.
    std::vector<char> GetBytes() const override;

    // The extended length in octets. It counts when the length/value/type is 5.
    int GetAdditionalLength() const { return extendedLength; }
    void SetAdditionalLength(int value) { extendedLength = value; }

private:
    int extendedLength = 0;

public:
    // The data octets as on the wire.
    std::vector<char> data;
};
