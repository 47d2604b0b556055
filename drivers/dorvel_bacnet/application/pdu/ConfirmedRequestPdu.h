#pragma once

#include <memory>
#include <vector>

#include "ConfirmedServiceRequest.h"
#include "IPduParser.h"
#include "MaxApduLengthAcceptedEnum.h"
#include "MaxSegmentsAcceptedEnum.h"
#include "ParserRegistry.h"
#include "SegmentedPdu.h"
#include "ServiceRequestParser.h"

// BACnet-Confirmed-Request-PDU (ASHRAE 135 clause 20.1.2): header, max segments and max APDU, invoke id,
// [sequence number, window size], service choice, service payload. It owns its service request.
class ConfirmedRequestPdu : public SegmentedPdu {
public:
    // No segmented response, max segments 0, max APDU 5 (1476 octets), no service request.
    ConfirmedRequestPdu() = default;
    // Both constructors take ownership of the service request.
    ConfirmedRequestPdu(char id, ConfirmedServiceChoiceEnum choice, bool segmented,
                        MaxSegmentsAcceptedEnum maxSegments, MaxApduLengthAcceptedEnum maxApdu,
                        ConfirmedServiceRequest* request);
    ConfirmedRequestPdu(char id, ConfirmedServiceChoiceEnum choice, bool segmented,
                        MaxSegmentsAcceptedEnum maxSegments, MaxApduLengthAcceptedEnum maxApdu,
                        std::unique_ptr<ConfirmedServiceRequest> request);

    PduTypeEnum PduType() const override { return PduTypeEnum::ConfirmedRequest; }

    // Two octets: that of the base, with 02 for segmented-response-accepted; then max segments (three bits)
    // in the upper half and max APDU (four bits) in the lower half.
    std::vector<char> GetHeader() const override;

    // Without a service request the service choice is the last octet.
    std::vector<char> GetBytes() const override;

    // Compares the fields of the base, then max segments, max APDU and segmented-response-accepted, but not
    // the service request.
    int Compare(PDU& other) const override;

    bool GetSegmentedResponseAccepted() const { return segmentedResponseAccepted; }
    void SetSegmentedResponseAccepted(bool value) { segmentedResponseAccepted = value; }
    MaxSegmentsAcceptedEnum GetMaxSegmentsAccepted() const { return maxSegmentsAccepted; }
    void SetMaxSegmentsAccepted(MaxSegmentsAcceptedEnum value) { maxSegmentsAccepted = value; }
    MaxApduLengthAcceptedEnum GetMaxApduLengthAccepted() const { return maxApduLengthAccepted; }
    void SetMaxApduLengthAccepted(MaxApduLengthAcceptedEnum value) { maxApduLengthAccepted = value; }
    // Null when there is none. This object keeps the ownership.
    ConfirmedServiceRequest* GetServiceRequest() const { return serviceRequest.get(); }

private:
    bool segmentedResponseAccepted = false;
    MaxSegmentsAcceptedEnum maxSegmentsAccepted = MaxSegmentsAcceptedEnum::Unspecified;
    MaxApduLengthAcceptedEnum maxApduLengthAccepted = MaxApduLengthAcceptedEnum::Octets1476;
    std::unique_ptr<ConfirmedServiceRequest> serviceRequest;
};

// Parses the service payload of a segment too: a request keeps no raw payload.
class ConfirmedRequestParser : public IPduParser {
public:
    using RequestParsers = ParserRegistry<ConfirmedServiceChoiceEnum, ServiceRequestParser>;

    ConfirmedRequestParser();

    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;

    // Throws FormatErrorException for a service without a parser.
    std::unique_ptr<ConfirmedServiceRequest> ParseConfirmedServiceRequest(ConfirmedServiceChoiceEnum choice,
                                                                          IStreamBase& stream) const;

    static RequestParsers GetDefaultRequestParsers();

private:
    RequestParsers const requestParsers;
};
