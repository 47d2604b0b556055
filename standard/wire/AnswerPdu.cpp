#include "AnswerPdu.h"

#include "Refusal.h"
#include "TagReader.h"

namespace standard {

namespace {

enum PduType : std::uint8_t {
    SimpleAckType = 2,
    ComplexAckType = 3,
    SegmentAckType = 4,
    ErrorType = 5,
    RejectType = 6,
    AbortType = 7
};

// Bits of the first octet.
constexpr std::uint8_t Segmented = 0x08;
constexpr std::uint8_t MoreFollows = 0x04;
constexpr std::uint8_t Negative = 0x02;
constexpr std::uint8_t FromServer = 0x01;

std::uint32_t EnumeratedValue(TagReader& reader) {
    Primitive const value = reader.Application();
    if (value.tag != ApplicationTag::Enumerated || value.content.empty() || value.content.size() > 4) {
        throw Reject{RejectReason::InvalidTag};
    }
    return static_cast<std::uint32_t>(OctetReader(value.content).BigEndian(value.content.size()));
}

// Class and code. Some services have them in an opening tag 0, before their own parameters.
Failure ErrorOf(Octets const& apdu, std::size_t position) try {
    TagReader reader(apdu, position);
    if (reader.NextIsOpening(0)) {
        reader.Opening(0);
    }
    Failure failure;
    failure.kind = Failure::Kind::Error;
    failure.errorClass = EnumeratedValue(reader);
    failure.code = EnumeratedValue(reader);
    return failure;
} catch (Reject const&) {
    return {Failure::Kind::Malformed, 0, 0, "an error without class and code"};
}

void ReadComplexAck(AnswerPdu& answer, std::uint8_t flags, OctetReader& reader) {
    answer.isSegmented = (flags & Segmented) != 0;
    answer.moreFollows = answer.isSegmented && (flags & MoreFollows) != 0;
    if (answer.isSegmented) {
        answer.sequenceNumber = reader.U8();
        answer.windowSize = reader.U8();
    }
    answer.serviceChoice = reader.U8();
    answer.contentAt = reader.Position();
}

void ReadSegmentAck(AnswerPdu& answer, std::uint8_t flags, OctetReader& reader) {
    answer.isNegative = (flags & Negative) != 0;
    answer.isFromServer = (flags & FromServer) != 0;
    answer.sequenceNumber = reader.U8();
    answer.windowSize = reader.U8();
}

void ReadRest(AnswerPdu& answer, std::uint8_t flags, Octets const& apdu, OctetReader& reader) {
    switch (answer.kind) {
        case AnswerPdu::Kind::SimpleAck:
            answer.serviceChoice = reader.U8();
            break;
        case AnswerPdu::Kind::ComplexAck:
            ReadComplexAck(answer, flags, reader);
            break;
        case AnswerPdu::Kind::SegmentAck:
            ReadSegmentAck(answer, flags, reader);
            break;
        case AnswerPdu::Kind::Error:
            answer.serviceChoice = reader.U8();
            answer.failure = ErrorOf(apdu, reader.Position());
            break;
        case AnswerPdu::Kind::Reject:
            answer.failure = Failure{Failure::Kind::Reject, 0, reader.U8(), {}};
            break;
        case AnswerPdu::Kind::Abort:
            answer.isFromServer = (flags & FromServer) != 0;
            answer.failure = Failure{Failure::Kind::Abort, 0, reader.U8(), {}};
            break;
    }
}

}  // namespace

std::optional<AnswerPdu> AnswerPdu::Decode(Octets const& apdu) try {
    OctetReader reader(apdu);
    std::uint8_t const first = reader.U8();
    std::uint8_t const type = first >> 4;
    if (type < SimpleAckType || type > AbortType) {
        return std::nullopt;
    }
    AnswerPdu answer;
    answer.kind = static_cast<Kind>(type - SimpleAckType);
    answer.invokeId = reader.U8();
    ReadRest(answer, first & 0x0F, apdu, reader);
    return answer;
} catch (EndOfOctets const&) {
    return std::nullopt;
}

}  // namespace standard
