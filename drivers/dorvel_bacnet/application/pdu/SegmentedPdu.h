#pragma once

#include <vector>

#include "ConfirmedServiceChoiceEnum.h"
#include "PDU.h"

// The base of the PDUs that can be segmented, ConfirmedRequestPdu and ComplexAck, with the header fields that
// both have (ASHRAE 135 clauses 20.1.2 and 20.1.5). Invoke id, sequence number and window size count as
// unsigned octets.
class SegmentedPdu : public PDU {
public:
    // All fields 0 and false; the service choice is 12 (ReadProperty).
    SegmentedPdu() = default;
    // An unsegmented message.
    SegmentedPdu(char id, ConfirmedServiceChoiceEnum choice);
    // One segment: sets segmented-message.
    SegmentedPdu(char id, ConfirmedServiceChoiceEnum choice, bool more, char sequence, char window);

    // Compares by subtraction: the type, then segmented-message, more-follows, invoke id, sequence number,
    // window size and service choice. Throws std::bad_cast for a PDU of the same type and another class.
    int Compare(PDU& other) const override;

    // GetHeader() and the invoke id; for a segmented message also the sequence number and the window size.
    std::vector<char> GetBytes() const override;

    // The octets before the invoke id. By default one: the PDU type in the upper half, 08 for
    // segmented-message, 04 for more-follows.
    virtual std::vector<char> GetHeader() const;

    bool GetSegmentedMessage() const { return segmentedMessage; }
    void SetSegmentedMessage(bool value) { segmentedMessage = value; }
    bool GetMoreFollows() const { return moreFollows; }
    void SetMoreFollows(bool value) { moreFollows = value; }
    char GetInvokeId() const { return invokeId; }
    void SetInvokeId(char value) { invokeId = value; }
    char GetSequenceNumber() const { return sequenceNumber; }
    void SetSequenceNumber(char value) { sequenceNumber = value; }
    char GetProposedWindowSize() const { return proposedWindowSize; }
    void SetProposedWindowSize(char value) { proposedWindowSize = value; }
    ConfirmedServiceChoiceEnum GetServiceChoice() const { return serviceChoice; }
    void SetServiceChoice(ConfirmedServiceChoiceEnum value) { serviceChoice = value; }

private:
    bool segmentedMessage = false;
    bool moreFollows = false;
    char invokeId = 0;
    char sequenceNumber = 0;
    char proposedWindowSize = 0;
    ConfirmedServiceChoiceEnum serviceChoice = ConfirmedServiceChoiceEnum::ReadProperty;
};
