#include "PduParser.h"

#include "AbortPdu.h"
#include "ComplexAck.h"
#include "ConfirmedRequestPdu.h"
#include "ErrorPdu.h"
#include "Octets.h"
#include "RejectPdu.h"
#include "SimpleAck.h"

namespace {

// Built on first use, for a static initialiser that runs before those of this file.
PduParser::Registry const& TheRegistry() {
    static PduParser::Registry const registry = PduParser::GetDefaultPduParsers();
    return registry;
}

}  // namespace

PduParser::Registry const& PduParser::PduParsers = TheRegistry();

ConfirmedServiceChoiceEnum _serviceChoice{};

std::unique_ptr<PDU> PduParser::Parse(IStreamBase& stream) {
    char const firstOctet = stream.ReadByte();
    auto const type = static_cast<PduTypeEnum>(OctetValue(firstOctet) >> 4);
    return FindParser(TheRegistry(), type).Parse(firstOctet, stream);
}

PduParser::Registry PduParser::GetDefaultPduParsers() {
    return {
        {PduTypeEnum::ConfirmedRequest, std::make_shared<ConfirmedRequestParser>()},
        {PduTypeEnum::SimpleAck, std::make_shared<SimpleAckParser>()},
        {PduTypeEnum::ComplexAck, std::make_shared<ComplexAckParser>()},
        {PduTypeEnum::Error, std::make_shared<ErrorPduParser>()},
        {PduTypeEnum::Reject, std::make_shared<RejectPduParser>()},
        {PduTypeEnum::Abort, std::make_shared<AbortPduParser>()},
    };
}
