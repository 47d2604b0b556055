// The write path: one WriteProperty per value of the runtime, and its answer.

#include <algorithm>
#include <iterator>
#include <new>
#include <stdexcept>
#include <utility>

#include "BuildValue.h"
#include "ConfirmedRequestPdu.h"
#include "ErrorResponseException.h"
#include "FormRequest.h"
#include "ParseApdu.h"
#include "Refusals.h"
#include "SimpleAck.h"
#include "SupportInformation.h"
#include "TBACnet.h"
#include "WritePropertyRequest.h"
#include "dorvelshare/Trace.h"

namespace dorvel::BACnet {

namespace {

struct WritableProperty {
    ObjectTypeEnum objectType;
    PropertyIdentifierEnum property;
};

// The properties that are written themselves; a write to any other goes to Present_Value.
constexpr WritableProperty WritableProperties[] = {
    {ObjectTypeEnum::Loop, PropertyIdentifierEnum::Proportional_Constant},
    {ObjectTypeEnum::Loop, PropertyIdentifierEnum::Integral_Constant},
    {ObjectTypeEnum::Loop, PropertyIdentifierEnum::Derivative_Constant},
    {ObjectTypeEnum::Schedule, PropertyIdentifierEnum::Weekly_Schedule},
    {ObjectTypeEnum::Schedule, PropertyIdentifierEnum::Exception_Schedule},
};

PropertyIdentifierEnum WrittenProperty(tagAddress const& address) {
    bool const isWritable = std::any_of(
        std::begin(WritableProperties), std::end(WritableProperties), [&address](auto const& candidate) {
            return candidate.objectType == address.objectType && candidate.property == address.propertyId;
        });
    return isWritable ? address.propertyId : PropertyIdentifierEnum::Present_Value;
}

// Context tag 4 of one octet, the last element of a WriteProperty-Request (ASHRAE 135 clause 21).
constexpr char PriorityTag = 0x49;
constexpr int HighestPriority = 1;
constexpr int LowestPriority = 16;

void AppendPriority(std::vector<char>& apdu, int priority) {
    if (priority >= HighestPriority && priority <= LowestPriority) {
        apdu.push_back(PriorityTag);
        apdu.push_back(static_cast<char>(priority));
    }
}

bool IsLatestWrite(char invokeId) {
    return static_cast<unsigned char>(invokeId) == WriteInvokeId.load(std::memory_order_relaxed);
}

void ThrowIfLatestWrite(ErrorPdu const& pdu) {
    if (IsLatestWrite(pdu.GetOriginalInvokeId())) {
        SimpleError const& error = SimpleErrorOf(pdu);
        throw ErrorResponseException(
            "Error! Error packet. Class: " + ErrorPdu::Message(error.GetErrorClass()) +
                " Code: " + ErrorPdu::Message(error.GetErrorCode()),
            error.GetErrorClass(), error.GetErrorCode());
    }
}

void ThrowIfLatestWrite(RejectPdu const& pdu) {
    if (IsLatestWrite(pdu.GetOriginalInvokeId())) {
        throw RejectionOf(pdu);
    }
}

}  // namespace

void TBACnet::Write(tagReadData* tag, OpcUa_VariantHlp& value) try {
    std::unique_ptr<Network::Layer> const layer(Network::Layer::GetDefault());
    ProcessWriteTag(*tag, *layer, value);
} catch (std::bad_alloc const&) {
    // No memory for the layer: as any other failure this ends the write only, not the task of the caller.
    logMsg("Unknown error");
}

void TBACnet::ProcessWriteTag(tagReadData const& tag, Network::Layer&, OpcUa_VariantHlp const& value) {
    try {
        WriteAndDrain(tag, value);
    } catch (std::runtime_error const& failure) {
        // As a format, the text has no directives: all these texts come from the driver's own tables.
        logMsg(failure.what());
    } catch (...) {
        logMsg("Unknown error");
    }
}

void TBACnet::WriteAndDrain(tagReadData const& tag, OpcUa_VariantHlp const& value) {
    std::vector<char> apdu;
    SendAndReceive(FormWriteRequest(tag, settings->linkAddress, settings->remoteAddress, value), apdu);
    ProcessWriteResponse(*ParseApdu(apdu), tag);
    // The first answer may be a late one to an earlier request: another one is received in any case.
    while (Receive(apdu) > 0 && !ProcessWriteResponse(*ParseApdu(apdu), tag)) {
    }
}

Network::NDataUnitRequest TBACnet::FormWriteRequest(tagReadData const& tag,
                                                    std::vector<char> const& linkAddress,
                                                    Network::Address const& remoteAddress,
                                                    OpcUa_VariantHlp const& value) {
    // The ids only have to be distinct; nothing else is ordered by them.
    int const invokeId = (WriteInvokeId.fetch_add(1, std::memory_order_relaxed) + 1) & 0xFF;
    return AddressedRequest(FormWriteMessage(tag, invokeId, value), linkAddress, remoteAddress);
}

std::vector<char> TBACnet::FormWriteMessage(tagReadData const& tag, int invokeId,
                                            OpcUa_VariantHlp const& value) {
    tagAddress const& address = *tag.address;
    PropertyInfo const info =
        SupportInformation::GetInstance()->GetPropertyInfo(address.objectType, address.propertyId);
    ObjectIdentifier const object(address.objectType, static_cast<unsigned int>(address.objectNumber));
    auto request = std::make_unique<WritePropertyRequest>(object, WrittenProperty(address), -1, nullptr);
    request->SetPropertyValue(BuildValue(info.type, value, localTimeDiff));
    ConfirmedRequestPdu const pdu(static_cast<char>(invokeId), ConfirmedServiceChoiceEnum::WriteProperty,
                                  false, MaxSegmentsAcceptedEnum::Unspecified,
                                  MaxApduLengthAcceptedEnum::Octets1024, std::move(request));
    std::vector<char> apdu = pdu.GetBytes();
    AppendPriority(apdu, settings->priority);
    return apdu;
}

bool ProcessWriteResponse(PDU& pdu, tagReadData const&) {
    switch (pdu.PduType()) {
        case PduTypeEnum::SimpleAck:
            return IsLatestWrite(dynamic_cast<SimpleAck&>(pdu).GetInvokeId());
        case PduTypeEnum::Error:
            ThrowIfLatestWrite(dynamic_cast<ErrorPdu&>(pdu));
            return false;
        case PduTypeEnum::Reject:
            ThrowIfLatestWrite(dynamic_cast<RejectPdu&>(pdu));
            return false;
        default:
            return false;
    }
}

}  // namespace dorvel::BACnet
