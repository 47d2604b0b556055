#pragma once

#include <memory>
#include <vector>

#include "ConfirmedServiceChoiceEnum.h"
#include "IPduParser.h"

// BACnet-SimpleACK-PDU (ASHRAE 135 clause 20.1.4), always three octets: 20, invoke id, service choice.
class SimpleAck : public PDU {
public:
    // Invoke id 0 and service choice 0.
    SimpleAck() = default;
    SimpleAck(char id, ConfirmedServiceChoiceEnum choice);

    PduTypeEnum PduType() const override { return PduTypeEnum::SimpleAck; }
    std::vector<char> GetBytes() const override;

    // Compares the PDU types, then as below. Throws std::bad_cast for a PDU of this type and another class.
    int Compare(PDU& other) const override;
    // Compares by subtraction: the invoke ids as unsigned octets, then the service choices.
    int Compare(SimpleAck& other) const;

    char GetInvokeId() const { return invokeId; }
    void SetInvokeId(char value) { invokeId = value; }
    ConfirmedServiceChoiceEnum GetServiceAckChoice() const { return serviceAckChoice; }
    void SetServiceAckChoice(ConfirmedServiceChoiceEnum value) { serviceAckChoice = value; }

private:
    char invokeId = 0;
    ConfirmedServiceChoiceEnum serviceAckChoice{};
};

// Ignores the first octet.
class SimpleAckParser : public IPduParser {
public:
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;
};
