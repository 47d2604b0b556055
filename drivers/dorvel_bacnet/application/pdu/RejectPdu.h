#pragma once

#include <memory>
#include <string>
#include <vector>

#include "IPduParser.h"
#include "PDU.h"
#include "ReasonEnum.h"

// BACnet-Reject-PDU (ASHRAE 135 clause 20.1.8): 60, original invoke id, reason.
class RejectPdu : public PDU {
public:
    RejectPdu() = default;
    RejectPdu(char id, ReasonEnum why);

    PduTypeEnum PduType() const override { return PduTypeEnum::Reject; }
    std::vector<char> GetBytes() const override;

    // Both always return 0, so operator== is true for any other PDU. Equals compares the contents.
    int Compare(PDU& other) const override;
    int Compare(RejectPdu& other) const;

    // True for the very same object; throws std::bad_cast for another class.
    bool Equals(PDU& other) const override;
    // Compares invoke id and reason.
    bool Equals(RejectPdu& other) const;

    char GetOriginalInvokeId() const { return originalInvokeId; }
    void SetOriginalInvokeId(char value) { originalInvokeId = value; }
    ReasonEnum GetReason() const { return reason; }
    void SetReason(ReasonEnum value) { reason = value; }

    // The text for the log.
    static std::string Message(ReasonEnum why);

private:
    char originalInvokeId = 0;
    ReasonEnum reason{};
};

// Ignores the first octet.
class RejectPduParser : public IPduParser {
public:
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;
};
