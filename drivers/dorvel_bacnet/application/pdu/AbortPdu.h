#pragma once

#include <memory>
#include <string>
#include <vector>

#include "AbortReasonEnum.h"
#include "IPduParser.h"
#include "PDU.h"

// BACnet-Abort-PDU (ASHRAE 135 clause 20.1.9): 70, wire invoke id, wire reason. The server bit of the first
// octet is never set and never read.
//
// Departure from clause 20.1.9: an abort holds two pairs of invoke id and reason. Constructor, parser,
// setters and Equals use the original pair. GetBytes, Compare(AbortPdu&) and the device client use the wire
// pair, which nothing sets, so it is always 0. The device client therefore recognises an abort only while the
// invoke id of the pending request is 0. Installed systems rely on this.
class AbortPdu : public PDU {
public:
    AbortPdu() = default;
    AbortPdu(char id, AbortReasonEnum why);

    PduTypeEnum PduType() const override { return PduTypeEnum::Abort; }
    // The wire pair: 70 00 00, whatever the original pair holds.
    std::vector<char> GetBytes() const override;

    // Always 0, so operator== is true for any other PDU. Equals compares the contents.
    int Compare(PDU& other) const override;
    // The difference of the wire reasons. If there is none, copies the original invoke id of the other abort
    // and returns it as an unsigned octet.
    int Compare(AbortPdu& other);

    // True for the very same object; throws std::bad_cast for another class.
    bool Equals(PDU& other) const override;
    // Compares original invoke id and reason.
    bool Equals(AbortPdu& other) const;

    char GetOriginalInvokeId() const { return originalInvokeId; }
    void SetOriginalInvokeId(char value) { originalInvokeId = value; }
    AbortReasonEnum GetReason() const { return reason; }
    void SetReason(AbortReasonEnum value) { reason = value; }
    char GetWireInvokeId() const { return wireInvokeId; }
    AbortReasonEnum GetWireReason() const { return wireReason; }

    // The text for the log. Reasons 7 and 8 have the same text.
    static std::string Message(AbortReasonEnum why);

private:
    char originalInvokeId = 0;
    AbortReasonEnum reason{};
    char wireInvokeId = 0;
    AbortReasonEnum wireReason{};
};

// Ignores the first octet and sets the original pair only.
class AbortPduParser : public IPduParser {
public:
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;
};
