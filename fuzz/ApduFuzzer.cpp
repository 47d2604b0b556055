// An APDU as the driver parses it: the PDU has the type of the octets, and what it writes is parsed as the
// same PDU.
#include <cstddef>
#include <cstdint>

#include "AbortPdu.h"
#include "ComplexAck.h"
#include "ConfirmedRequestPdu.h"
#include "ErrorPdu.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Octets.h"
#include "PduParser.h"
#include "ReadPropertyAck.h"
#include "ReadPropertyMultipleAck.h"
#include "RejectPdu.h"
#include "Require.h"
#include "SimpleAck.h"
#include "SupportInformation.h"
#include "WritePropertyRequest.h"

using fuzz::Require;

namespace {

// The PDU, or null if the parser threw one of the exceptions that its callers handle.
std::unique_ptr<PDU> ParseOrRefuse(Octets const& apdu) {
    FakeStream stream(apdu);
    try {
        return PduParser::Parse(stream);
    } catch (ParseException const&) {
    } catch (SupportInformationException const&) {
    } catch (ArgumentOutOfRangeException const&) {
    }
    return nullptr;
}

void RequireSupportedValues(ReadPropertyMultipleAck const& ack, std::size_t size) {
    Require(ack.GetValues().size() <= 127, "an ack has at most 127 values");
    Require(ack.GetValues().size() * 4 <= size, "a value takes four octets or more");
    for (auto const& [property, value] : ack.GetValues()) {
        Require(value != nullptr, "a property has a value");
        SupportInformation::GetInstance()->GetPropertyInfo(ack.GetObjectId().GetObjectType(), property);
    }
}

void RequireAck(ComplexAck const& ack, Octets apdu) {
    Require(ack.GetInvokeId() == apdu[1], "an ack has its invoke id");
    Require(ack.GetSegmentedMessage() == (ack.GetServiceAck() == nullptr),
            "an ack has no service exactly when it is a segment");
    if (ack.GetSegmentedMessage()) {
        apdu[0] = static_cast<char>(apdu[0] & 0xFC);
        Require(ack.GetBytes() == apdu, "a segment is written as it came, except for the reserved bits");
    } else if (auto const* multiple = dynamic_cast<ReadPropertyMultipleAck const*>(ack.GetServiceAck())) {
        RequireSupportedValues(*multiple, apdu.size());
    }
}

void RequireFits(PDU& pdu, Octets const& apdu) {
    Require(static_cast<unsigned>(pdu.PduType()) == OctetValue(apdu[0]) >> 4,
            "a PDU has the type in its first octet");
    Octets const head{static_cast<char>(apdu[0] & 0xF0), apdu[1], apdu[2]};
    Octets const written = pdu.GetBytes();
    switch (pdu.PduType()) {
        case PduTypeEnum::SimpleAck:
        case PduTypeEnum::Reject:
            Require(written == head, "a short PDU is written as it came");
            break;
        case PduTypeEnum::Error:
            Require(Octets(written.begin(), written.begin() + 3) == head,
                    "an error's head is written as it came");
            Require(dynamic_cast<ErrorPdu&>(pdu).GetError() != nullptr, "an error PDU has an error");
            break;
        case PduTypeEnum::Abort:
            Require(dynamic_cast<AbortPdu&>(pdu).GetOriginalInvokeId() == apdu[1],
                    "an abort has its invoke id");
            Require(dynamic_cast<AbortPdu&>(pdu).GetWireInvokeId() == 0,
                    "the invoke id that an abort writes stays 0");
            break;
        case PduTypeEnum::ConfirmedRequest:
            Require(dynamic_cast<ConfirmedRequestPdu&>(pdu).GetInvokeId() == apdu[2],
                    "a request has its invoke id");
            Require(dynamic_cast<ConfirmedRequestPdu&>(pdu).GetServiceRequest() != nullptr,
                    "a request has a service");
            break;
        case PduTypeEnum::ComplexAck:
            RequireAck(dynamic_cast<ComplexAck&>(pdu), apdu);
            break;
    }
}

bool IsSchedule(PropertyIdentifierEnum property) {
    return property == PropertyIdentifierEnum::Exception_Schedule ||
           property == PropertyIdentifierEnum::Weekly_Schedule;
}

// Whether the driver writes this so that it can be parsed again. It cannot if a schedule is in it, which is
// parsed to a text and written as a text, if a property number of an answer needs more than one octet, or if
// data of an answer is longer than 253 octets.
bool IsWritable(PDU const& pdu, Octets const& written) {
    if (auto const* const request = dynamic_cast<ConfirmedRequestPdu const*>(&pdu)) {
        auto const* const write = dynamic_cast<WritePropertyRequest const*>(request->GetServiceRequest());
        return write == nullptr || !IsSchedule(write->GetPropertyIdentifier());
    }
    auto const* const ack = dynamic_cast<ComplexAck const*>(&pdu);
    auto const* const single = ack ? dynamic_cast<ReadPropertyAck const*>(ack->GetServiceAck()) : nullptr;
    return single == nullptr || (static_cast<int>(single->GetPropertyIdentifier()) < 256 &&
                                 !IsSchedule(single->GetPropertyIdentifier()) && written.size() < 254);
}

void RequireSameAgain(PDU& pdu) {
    Octets const written = pdu.GetBytes();
    if (!IsWritable(pdu, written)) {
        return;
    }
    if (auto const again = ParseOrRefuse(written)) {
        Require(again->GetBytes() == written, "what was written is parsed as a PDU that writes the same");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Octets const apdu(data, data + size);
    if (auto const pdu = ParseOrRefuse(apdu)) {
        Require(size >= 3, "a PDU has at least three octets");
        RequireFits(*pdu, apdu);
        RequireSameAgain(*pdu);
    }
    Require(PduParser::PduParsers.size() == 6, "the registry does not grow");
    return 0;
}
