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
// An abort has two pairs of invoke id and reason. The original pair is what the constructor, the parser, the
// setters and Equals use. The wire pair is what GetBytes, Compare(AbortPdu&) and the device client's report
// use. Nothing writes the wire pair, so it is always 0: the device client takes an abort as meant for it when
// the pending invoke id is 0 only. The pairs stay apart on purpose.
class AbortPdu : public PDU {
public:
    AbortPdu() = default;
    AbortPdu(char id, AbortReasonEnum why);

    PduTypeEnum PduType() const override { return PduTypeEnum::Abort; }
    // From the wire pair: 70 00 00, whatever the original pair holds.
    std::vector<char> GetBytes() const override;

    // Always 0, so operator== is true for any other PDU. Equals is the test of contents.
    int Compare(PDU& other) const override;
    // The difference of the wire reasons; when there is none, takes over the other's original invoke id and
    // returns it as an unsigned octet.
    int Compare(AbortPdu& other);

    // True for the very same object; throws std::bad_cast for another class.
    bool Equals(PDU& other) const override;
    // Original invoke id and reason are equal.
    bool Equals(AbortPdu& other) const;

    char GetOriginalInvokeId() const { return originalInvokeId; }
    void SetOriginalInvokeId(char value) { originalInvokeId = value; }
    AbortReasonEnum GetReason() const { return reason; }
    void SetReason(AbortReasonEnum value) { reason = value; }
    char GetWireInvokeId() const { return wireInvokeId; }
    AbortReasonEnum GetWireReason() const { return wireReason; }

    // The text of the log. Reason 7 has the text of 8.
    static std::string Message(AbortReasonEnum why);

private:
    char originalInvokeId = 0;
    AbortReasonEnum reason{};
    char wireInvokeId = 0;
    AbortReasonEnum wireReason{};
};

// Ignores the first octet; fills the original pair alone.
class AbortPduParser : public IPduParser {
public:
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;
};
