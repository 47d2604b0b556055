#include "SegmentedPdu.h"

#include "Octets.h"
#include "PduFlags.h"
#include "UsualMessage.h"

SegmentedPdu::SegmentedPdu(char id, ConfirmedServiceChoiceEnum choice)
    : invokeId(id), serviceChoice(choice) {}

SegmentedPdu::SegmentedPdu(char id, ConfirmedServiceChoiceEnum choice, bool more, char sequence, char window)
    : segmentedMessage(true),
      moreFollows(more),
      invokeId(id),
      sequenceNumber(sequence),
      proposedWindowSize(window),
      serviceChoice(choice) {}

int SegmentedPdu::Compare(PDU& other) const {
    if (int const difference = PDU::Compare(other)) {
        return difference;
    }
    auto const& segmented = dynamic_cast<SegmentedPdu&>(other);
    return FirstDifference({
        segmentedMessage - segmented.segmentedMessage,
        moreFollows - segmented.moreFollows,
        OctetDifference(invokeId, segmented.invokeId),
        OctetDifference(sequenceNumber, segmented.sequenceNumber),
        OctetDifference(proposedWindowSize, segmented.proposedWindowSize),
        EnumDifference(serviceChoice, segmented.serviceChoice),
    });
}

std::vector<char> SegmentedPdu::GetBytes() const {
    std::vector<char> octets = GetHeader();
    octets.push_back(invokeId);
    if (segmentedMessage) {
        octets.push_back(sequenceNumber);
        octets.push_back(proposedWindowSize);
    }
    return octets;
}

std::vector<char> SegmentedPdu::GetHeader() const {
    int header = static_cast<int>(PduType()) << 4;
    header |= segmentedMessage ? SegmentedMessageBit : 0;
    header |= moreFollows ? MoreFollowsBit : 0;
    std::vector<char> octets;
    octets.reserve(UsualMessage);
    octets.push_back(static_cast<char>(header));
    return octets;
}
