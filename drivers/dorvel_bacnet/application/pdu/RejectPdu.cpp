#include "RejectPdu.h"

#include "MessageTable.h"
#include "Octets.h"

namespace {

constexpr MessageRow RejectReasons[] = {
    {0, "Other"},
    {1, "BufferOverflow"},
    {2, "InconsistentParameters"},
    {3, "InvalidParameterDataType"},
    {4, "InvalidTag"},
    {5, "MissingRequiredParameter"},
    {6, "ParameterOutOfRange"},
    {7, "TooManyArguments"},
    {8, "UndefinedEnumeration"},
    {9, "UnrecognizedService"},
    {AnyOther, "UnknownReason"},
};

}  // namespace

RejectPdu::RejectPdu(char id, ReasonEnum why) : originalInvokeId(id), reason(why) {}

std::vector<char> RejectPdu::GetBytes() const {
    return {0x60, originalInvokeId, static_cast<char>(reason)};
}

int RejectPdu::Compare(PDU&) const {
    return 0;
}

int RejectPdu::Compare(RejectPdu&) const {
    return 0;
}

bool RejectPdu::Equals(PDU& other) const {
    return this == &other || Equals(dynamic_cast<RejectPdu&>(other));
}

bool RejectPdu::Equals(RejectPdu& other) const {
    return originalInvokeId == other.originalInvokeId && reason == other.reason;
}

std::string RejectPdu::Message(ReasonEnum why) {
    return FindMessage(RejectReasons, static_cast<int>(why));
}

std::unique_ptr<PDU> RejectPduParser::Parse(char, IStreamBase& stream) const {
    char const invokeId = stream.ReadByte();
    return std::make_unique<RejectPdu>(invokeId, ReadEnum<ReasonEnum>(stream));
}
