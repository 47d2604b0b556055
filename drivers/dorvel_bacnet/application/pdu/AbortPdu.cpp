#include "AbortPdu.h"

#include "MessageTable.h"
#include "Octets.h"

namespace {

constexpr MessageRow AbortReasons[] = {
    {0, "Other"},
    {1, "Buffer overflow"},
    {2, "Invalid apdu in this state"},
    {3, "Preempted by higher priority task"},
    {4, "Segmentation not supported"},
    {5, "Security error"},
    {6, "Insufficient security"},
    {7, "Application exceeded reply time"},
    {8, "Application exceeded reply time"},
    {9, "Out of resources"},
    {10, "Tsm timeout"},
    {11, "Apdu too long"},
    {AnyOther, "Unknown reason"},
};

}  // namespace

AbortPdu::AbortPdu(char id, AbortReasonEnum why) : originalInvokeId(id), reason(why) {}

std::vector<char> AbortPdu::GetBytes() const {
    return {0x70, wireInvokeId, static_cast<char>(wireReason)};
}

int AbortPdu::Compare(PDU&) const {
    return 0;
}

int AbortPdu::Compare(AbortPdu& other) {
    if (int const difference = EnumDifference(wireReason, other.wireReason)) {
        return difference;
    }
    originalInvokeId = other.originalInvokeId;
    return OctetValue(originalInvokeId);
}

bool AbortPdu::Equals(PDU& other) const {
    return this == &other || Equals(dynamic_cast<AbortPdu&>(other));
}

bool AbortPdu::Equals(AbortPdu& other) const {
    return originalInvokeId == other.originalInvokeId && reason == other.reason;
}

std::string AbortPdu::Message(AbortReasonEnum why) {
    return FindMessage(AbortReasons, static_cast<int>(why));
}

std::unique_ptr<PDU> AbortPduParser::Parse(char, IStreamBase& stream) const {
    char const invokeId = stream.ReadByte();
    return std::make_unique<AbortPdu>(invokeId, ReadEnum<AbortReasonEnum>(stream));
}
