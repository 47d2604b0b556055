#include "ComplexAck.h"

#include <cstring>
#include <utility>

#include "Octets.h"
#include "PduFlags.h"
#include "ReadPropertyAck.h"
#include "ReadPropertyMultipleAck.h"

namespace {

static_assert(sizeof(ComplexAck) <= AnswerStore::BlockSize, "a store has no room for it");

int CompareOctets(std::vector<char> const& left, std::vector<char> const& right) {
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    return left.empty() ? 0 : std::memcmp(left.data(), right.data(), left.size());
}

}  // namespace

ComplexAck::ComplexAck(char id, ConfirmedServiceChoiceEnum choice, ConfirmedServiceAck* ack)
    : ComplexAck(id, choice, std::unique_ptr<ConfirmedServiceAck>(ack)) {}

ComplexAck::ComplexAck(char id, ConfirmedServiceChoiceEnum choice, std::unique_ptr<ConfirmedServiceAck> ack)
    : SegmentedPdu(id, choice), serviceAck(std::move(ack)) {}

ComplexAck::ComplexAck(char id, ConfirmedServiceChoiceEnum choice, bool more, char sequence, char window,
                       IStreamBase& stream)
    : SegmentedPdu(id, choice, more, sequence, window),
      rawPayload(static_cast<std::size_t>(stream.Available())) {
    stream.Receive(rawPayload.data(), static_cast<unsigned>(rawPayload.size()));
}

std::vector<char> ComplexAck::GetBytes() const {
    std::vector<char> octets = SegmentedPdu::GetBytes();
    octets.push_back(static_cast<char>(GetServiceChoice()));
    if (serviceAck) {
        AppendOctets(octets, serviceAck->GetBytes());
    } else {
        AppendOctets(octets, rawPayload);
    }
    return octets;
}

int ComplexAck::Compare(PDU& other) const {
    if (int const difference = PDU::Compare(other)) {
        return difference;
    }
    auto const& ack = dynamic_cast<ComplexAck&>(other);
    if (serviceAck && ack.serviceAck) {
        return serviceAck->Compare(*ack.serviceAck);
    }
    if (serviceAck || ack.serviceAck) {
        return serviceAck ? 1 : -1;
    }
    return CompareOctets(rawPayload, ack.rawPayload);
}

ComplexAckParser::ComplexAckParser() : ackParsers(GetDefaultAckParsers()) {}

std::unique_ptr<PDU> ComplexAckParser::Parse(char firstOctet, IStreamBase& stream) const {
    char const invokeId = stream.ReadByte();
    if ((firstOctet & SegmentedMessageBit) == 0) {
        auto const choice = ReadEnum<ConfirmedServiceChoiceEnum>(stream);
        return std::make_unique<ComplexAck>(invokeId, choice, ParseServiceAck(choice, stream));
    }
    char const sequenceNumber = stream.ReadByte();
    char const windowSize = stream.ReadByte();
    auto const choice = ReadEnum<ConfirmedServiceChoiceEnum>(stream);
    bool const moreFollows = (firstOctet & MoreFollowsBit) != 0;
    return std::make_unique<ComplexAck>(invokeId, choice, moreFollows, sequenceNumber, windowSize, stream);
}

std::unique_ptr<ConfirmedServiceAck> ComplexAckParser::ParseServiceAck(ConfirmedServiceChoiceEnum choice,
                                                                       IStreamBase& stream) const {
    return FindParser(ackParsers, choice).Parse(stream);
}

ComplexAckParser::AckParsers ComplexAckParser::GetDefaultAckParsers() {
    return {
        {ConfirmedServiceChoiceEnum::ReadProperty, std::make_shared<ReadPropertyAckParser>()},
        {ConfirmedServiceChoiceEnum::ReadPropertyMultiple, std::make_shared<ReadPropertyMultipleAckParser>()},
    };
}
