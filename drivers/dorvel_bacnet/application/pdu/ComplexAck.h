#pragma once

#include <memory>
#include <vector>

#include "ConfirmedServiceAck.h"
#include "IPduParser.h"
#include "ParserRegistry.h"
#include "SegmentedPdu.h"
#include "ServiceAckParser.h"

// BACnet-ComplexACK-PDU (ASHRAE 135 clause 20.1.5): header, invoke id, [sequence number, window size],
// service choice, service payload. It owns its service ack. A segment has no service ack but its payload as
// raw octets, since only the joined segments can be parsed.
class ComplexAck : public SegmentedPdu {
public:
    ComplexAck() = default;
    // An unsegmented ack. Both constructors take ownership of the service ack.
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, ConfirmedServiceAck* ack);
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, std::unique_ptr<ConfirmedServiceAck> ack);
    // A segment: the rest of the stream is its raw payload.
    ComplexAck(char id, ConfirmedServiceChoiceEnum choice, bool more, char sequence, char window,
               IStreamBase& stream);
    // Copies nothing: the result is an empty ack, as from the default constructor.
    ComplexAck(ComplexAck const&) : SegmentedPdu() {}
    ComplexAck& operator=(ComplexAck const&) = delete;

    PduTypeEnum PduType() const override { return PduTypeEnum::ComplexAck; }

    // The payload is that of the service ack, or the raw one if there is no service ack. A segment with a
    // cleared segmented flag gives the start of an unsegmented ack.
    std::vector<char> GetBytes() const override;

    // Compares the PDU types, then the service acks, but no header field. An ack without a service ack sorts
    // before one with it. Two without compare by their raw payloads, the shorter one first.
    int Compare(PDU& other) const override;

    // Null for a segment. This object keeps the ownership.
    ConfirmedServiceAck* GetServiceAck() const { return serviceAck.get(); }
    // The service octets of a segment; empty for an unsegmented ack.
    std::vector<char> const& GetRawPayload() const { return rawPayload; }

private:
    std::unique_ptr<ConfirmedServiceAck> serviceAck;
    std::vector<char> rawPayload;
};

class ComplexAckParser : public IPduParser {
public:
    using AckParsers = ParserRegistry<ConfirmedServiceChoiceEnum, ServiceAckParser>;

    ComplexAckParser();

    // A segment reaches no service parser, not even the first one.
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;

    // Throws FormatErrorException for a service without a parser.
    std::unique_ptr<ConfirmedServiceAck> ParseServiceAck(ConfirmedServiceChoiceEnum choice,
                                                         IStreamBase& stream) const;

    static AckParsers GetDefaultAckParsers();

private:
    AckParsers const ackParsers;
};
