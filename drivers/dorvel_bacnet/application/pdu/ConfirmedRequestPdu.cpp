#include "ConfirmedRequestPdu.h"

#include <utility>

#include "Octets.h"
#include "PduFlags.h"
#include "ReadPropertyRequest.h"
#include "WritePropertyRequest.h"

ConfirmedRequestPdu::ConfirmedRequestPdu(char id, ConfirmedServiceChoiceEnum choice, bool segmented,
                                         MaxSegmentsAcceptedEnum maxSegments,
                                         MaxApduLengthAcceptedEnum maxApdu, ConfirmedServiceRequest* request)
    : ConfirmedRequestPdu(id, choice, segmented, maxSegments, maxApdu,
                          std::unique_ptr<ConfirmedServiceRequest>(request)) {}

ConfirmedRequestPdu::ConfirmedRequestPdu(char id, ConfirmedServiceChoiceEnum choice, bool segmented,
                                         MaxSegmentsAcceptedEnum maxSegments,
                                         MaxApduLengthAcceptedEnum maxApdu,
                                         std::unique_ptr<ConfirmedServiceRequest> request)
    : SegmentedPdu(id, choice),
      segmentedResponseAccepted(segmented),
      maxSegmentsAccepted(maxSegments),
      maxApduLengthAccepted(maxApdu),
      serviceRequest(std::move(request)) {}

std::vector<char> ConfirmedRequestPdu::GetHeader() const {
    std::vector<char> header = SegmentedPdu::GetHeader();
    if (segmentedResponseAccepted) {
        header[0] = static_cast<char>(header[0] | SegmentedResponseAcceptedBit);
    }
    int const segments = static_cast<int>(maxSegmentsAccepted) & 7;
    int const length = static_cast<int>(maxApduLengthAccepted) & 15;
    header.push_back(static_cast<char>(segments << 4 | length));
    return header;
}

std::vector<char> ConfirmedRequestPdu::GetBytes() const {
    std::vector<char> octets = SegmentedPdu::GetBytes();
    octets.push_back(static_cast<char>(GetServiceChoice()));
    if (serviceRequest) {
        AppendOctets(octets, serviceRequest->GetBytes());
    }
    return octets;
}

int ConfirmedRequestPdu::Compare(PDU& other) const {
    if (int const difference = SegmentedPdu::Compare(other)) {
        return difference;
    }
    auto const& request = dynamic_cast<ConfirmedRequestPdu&>(other);
    return FirstDifference({
        EnumDifference(maxSegmentsAccepted, request.maxSegmentsAccepted),
        EnumDifference(maxApduLengthAccepted, request.maxApduLengthAccepted),
        segmentedResponseAccepted - request.segmentedResponseAccepted,
    });
}

ConfirmedRequestParser::ConfirmedRequestParser() : requestParsers(GetDefaultRequestParsers()) {}

std::unique_ptr<PDU> ConfirmedRequestParser::Parse(char firstOctet, IStreamBase& stream) const {
    unsigned const limits = OctetValue(stream.ReadByte());
    char const invokeId = stream.ReadByte();
    bool const segmented = (firstOctet & SegmentedMessageBit) != 0;
    char const sequenceNumber = segmented ? stream.ReadByte() : char{0};
    char const windowSize = segmented ? stream.ReadByte() : char{0};
    auto const choice = ReadEnum<ConfirmedServiceChoiceEnum>(stream);
    auto request = std::make_unique<ConfirmedRequestPdu>(
        invokeId, choice, (firstOctet & SegmentedResponseAcceptedBit) != 0,
        static_cast<MaxSegmentsAcceptedEnum>(limits >> 4),
        static_cast<MaxApduLengthAcceptedEnum>(limits & 15), ParseConfirmedServiceRequest(choice, stream));
    request->SetMoreFollows((firstOctet & MoreFollowsBit) != 0);
    request->SetSegmentedMessage(segmented);
    request->SetSequenceNumber(sequenceNumber);
    request->SetProposedWindowSize(windowSize);
    return request;
}

std::unique_ptr<ConfirmedServiceRequest> ConfirmedRequestParser::ParseConfirmedServiceRequest(
    ConfirmedServiceChoiceEnum choice, IStreamBase& stream) const {
    return FindParser(requestParsers, choice).Parse(stream);
}

ConfirmedRequestParser::RequestParsers ConfirmedRequestParser::GetDefaultRequestParsers() {
    return {
        {ConfirmedServiceChoiceEnum::ReadProperty, std::make_shared<ReadPropertyRequestParser>()},
        {ConfirmedServiceChoiceEnum::WriteProperty, std::make_shared<WritePropertyRequestParser>()},
    };
}
