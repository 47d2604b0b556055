#include "SimpleAck.h"

#include "Octets.h"

SimpleAck::SimpleAck(char id, ConfirmedServiceChoiceEnum choice) : invokeId(id), serviceAckChoice(choice) {}

std::vector<char> SimpleAck::GetBytes() const {
    return {0x20, invokeId, static_cast<char>(serviceAckChoice)};
}

int SimpleAck::Compare(PDU& other) const {
    if (int const difference = PDU::Compare(other)) {
        return difference;
    }
    return Compare(dynamic_cast<SimpleAck&>(other));
}

int SimpleAck::Compare(SimpleAck& other) const {
    return FirstDifference({
        OctetDifference(invokeId, other.invokeId),
        EnumDifference(serviceAckChoice, other.serviceAckChoice),
    });
}

std::unique_ptr<PDU> SimpleAckParser::Parse(char, IStreamBase& stream) const {
    auto ack = std::make_unique<SimpleAck>();
    ack->SetInvokeId(stream.ReadByte());
    ack->SetServiceAckChoice(ReadEnum<ConfirmedServiceChoiceEnum>(stream));
    return ack;
}
