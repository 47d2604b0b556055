#pragma once

#include <memory>
#include <vector>

#include "ConfirmedServiceAck.h"
#include "IPduParser.h"
#include "ParserRegistry.h"
#include "SegmentedPdu.h"
#include "ServiceAckParser.h"

// BACnet-ComplexACK-PDU (ASHRAE 135 clause 20.1.5): header, invoke id, [sequence number, window size],
// service choice, service payload. It owns its service ack. A segment has none; it keeps its payload as the
// octets that came, since only the joined segments make sense.
class ComplexAck : public SegmentedPdu {
public:
    ComplexAck() = default;
    // An ack in one piece. Both constructors take ownership of the service ack.
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, ConfirmedServiceAck* ack);
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, std::unique_ptr<ConfirmedServiceAck> ack);
    // A segment: reads the stream to its end as the raw payload.
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, bool more, char sequence, char window,
               IStreamBase& stream);
    // Copies nothing: the result is an empty ack, as the default constructor makes it.
    ComplexAck(ComplexAck const&) : SegmentedPdu() {}
    ComplexAck& operator=(ComplexAck const&) = delete;

    PduTypeEnum PduType() const override { return PduTypeEnum::ComplexAck; }

    // The service payload is that of the service ack, or the raw payload when there is no service ack. So a
    // segment whose segmented flag is cleared gives the head of an unsegmented ack.
    std::vector<char> GetBytes() const override;

    // The PDU types, then the service acks; header fields take no part. An ack without a service ack sorts
    // before one that has it, and two without compare by their raw payloads, the shorter one first.
    int Compare(PDU& other) const override;

    // Null for a segment. Ownership stays here.
    ConfirmedServiceAck* GetServiceAck() const { return serviceAck.get(); }
    // The service octets of a segment; empty for an ack in one piece.
    std::vector<char> const& GetRawPayload() const { return rawPayload; }

private:
    std::unique_ptr<ConfirmedServiceAck> serviceAck;
    std::vector<char> rawPayload;
};

class ComplexAckParser : public IPduParser {
public:
    using AckParsers = ParserRegistry<ConfirmedServiceChoiceEnum, ServiceAckParser>;

    ComplexAckParser();

    // No service parser runs on a segment, not even on the first.
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;

    // Throws FormatErrorException for a service without a parser.
    std::unique_ptr<ConfirmedServiceAck> ParseServiceAck(ConfirmedServiceChoiceEnum choice,
                                                         IStreamBase& stream) const;

    static AckParsers GetDefaultAckParsers();

private:
    AckParsers const ackParsers;
};
