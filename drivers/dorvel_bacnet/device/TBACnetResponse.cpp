// The answer to a read: error responses become exceptions, values become records.

#include <algorithm>
#include <string>
#include <typeinfo>
#include <utility>

#include "AbortPdu.h"
#include "AbortResponseException.h"
#include "ComplexAck.h"
#include "EnumValue.h"
#include "ErrorResponseException.h"
#include "Refusals.h"
#include "SupportInformation.h"
#include "TBACnet.h"
#include "UserTrace.h"

namespace dorvel::BACnet {

namespace {

// The status code of a sensor failure (OPC 10000-8).
constexpr unsigned int SensorFailure = 0x808C0000;

// The four flags of Status_Flags, as the support table reads the bit string as a number.
constexpr unsigned int StatusFlagBits = 0xF0;

// True if an answer has the expected invoke id. `label` is the name of that id in the trace.
bool IsExpected(char const* label, char received, char expected) {
    if (received == expected) {
        return true;
    }
    Trace(" %s(%d) != ReadInvokeId(%d)", label, static_cast<unsigned char>(received),
          static_cast<unsigned char>(expected));
    return false;
}

constexpr char OriginalInvokeId[] = "OriginalInvokeId";

void ThrowIfExpected(ErrorPdu const& pdu, char readInvokeId) {
    if (IsExpected(OriginalInvokeId, pdu.GetOriginalInvokeId(), readInvokeId)) {
        SimpleError const& error = SimpleErrorOf(pdu);
        throw ErrorResponseException(error.GetErrorClass(), error.GetErrorCode());
    }
}

void ThrowIfExpected(RejectPdu const& pdu, char readInvokeId) {
    if (IsExpected(OriginalInvokeId, pdu.GetOriginalInvokeId(), readInvokeId)) {
        throw RejectionOf(pdu);
    }
}

void ThrowIfExpected(AbortPdu const& pdu, char readInvokeId) {
    if (IsExpected(OriginalInvokeId, pdu.GetWireInvokeId(), readInvokeId)) {
        throw AbortResponseException(
            "Error! Transaction cancelled. Reason: " + AbortPdu::Message(pdu.GetWireReason()),
            pdu.GetWireReason());
    }
}

unsigned int ObjectStatus(ReadPropertyMultipleAck const& ack) {
    auto const flags = ack.GetValues().find(PropertyIdentifierEnum::Status_Flags);
    if (flags == ack.GetValues().end()) {
        return OpcUa_Good;
    }
    unsigned int const value = dynamic_cast<EnumValue&>(*flags->second).GetValue();
    return (value & StatusFlagBits) != 0 ? SensorFailure : OpcUa_Good;
}

// The first tag for the property; null if there is none.
tagReadData const* FindTag(std::vector<tagReadData*> const& tags, PropertyIdentifierEnum property) {
    auto const tag = std::find_if(tags.begin(), tags.end(), [property](tagReadData const* candidate) {
        return candidate->address->propertyId == property;
    });
    return tag == tags.end() ? nullptr : *tag;
}

}  // namespace

int TBACnet::ProcessResponseM(ObjectIdentifier object, char const& readInvokeId, PDU& pdu,
                              std::vector<tagReadData*> const& objectTags,
                              std::vector<WriteDataRec>& values) {
    switch (pdu.PduType()) {
        case PduTypeEnum::ComplexAck: {
            auto const& ack = dynamic_cast<ComplexAck&>(pdu);
            if (!IsExpected("InvokeId", ack.GetInvokeId(), readInvokeId)) {
                return 0;
            }
            auto const* results = dynamic_cast<ReadPropertyMultipleAck const*>(ack.GetServiceAck());
            if (!results) {
                throw std::bad_cast();
            }
            DeliverValues(object, *results, objectTags, values);
            return 1;
        }
        case PduTypeEnum::Error:
            ThrowIfExpected(dynamic_cast<ErrorPdu&>(pdu), readInvokeId);
            return 0;
        case PduTypeEnum::Reject:
            ThrowIfExpected(dynamic_cast<RejectPdu&>(pdu), readInvokeId);
            return 0;
        case PduTypeEnum::Abort:
            ThrowIfExpected(dynamic_cast<AbortPdu&>(pdu), readInvokeId);
            return 0;
        default:
            Trace(" Unknown Answer Type(%d)", static_cast<int>(pdu.PduType()));
            return 0;
    }
}

void TBACnet::DeliverValues(ObjectIdentifier object, ReadPropertyMultipleAck const& ack,
                            std::vector<tagReadData*> const& objectTags, std::vector<WriteDataRec>& values) {
    SupportInformation const& support = *SupportInformation::GetInstance();
    unsigned int const objectStatus = ObjectStatus(ack);
    for (auto const& [property, value] : ack.GetValues()) {
        PropertyInfo const info = support.GetPropertyInfo(object.GetObjectType(), property);
        tagReadData const* tag = FindTag(objectTags, property);
        if (!tag) {
            continue;
        }
        bool const carriesQuality = property == PropertyIdentifierEnum::Present_Value;
        WriteDataRec record;
        ProcessResponseForTag(info.type, tag->descriptor, *value, carriesQuality ? objectStatus : OpcUa_Good,
                              record);
        values.push_back(std::move(record));
    }
}

}  // namespace dorvel::BACnet
