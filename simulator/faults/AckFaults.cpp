#include "AckFaults.h"

#include "Answers.h"
#include "ConfirmedRequest.h"
#include "Content.h"
#include "OctetReader.h"
#include "Refusal.h"
#include "TagReader.h"

namespace simulator::acks {

namespace {

enum ServiceChoice : std::uint8_t {
    ReadPropertyChoice = 12,
    ReadPropertyMultipleChoice = 14,
    WritePropertyChoice = 15,
    WritePropertyMultipleChoice = 16
};

FaultScope ScopeOf(std::uint8_t serviceChoice) {
    switch (serviceChoice) {
        case ReadPropertyChoice:
        case ReadPropertyMultipleChoice:
            return FaultScope::Read;
        case WritePropertyChoice:
        case WritePropertyMultipleChoice:
            return FaultScope::Write;
        default:
            return FaultScope::Any;
    }
}

void AddObject(TagWriter& writer, ObjectId id) {
    writer.Context(0, content::ObjectIdentifier(id));
}

Octets OfNextInstance(Octets const& ack) {
    TagReader reader(ack);
    ObjectId id = reader.ObjectIdentifier(0);
    id.instance = (id.instance + 1) & ObjectId::LastInstance;
    TagWriter writer;
    AddObject(writer, id);
    Octets changed = writer.Take();
    changed.insert(changed.end(), ack.begin() + static_cast<std::ptrdiff_t>(changed.size()), ack.end());
    return changed;
}

// One ReadAccessResult (clause 21) without the result of its last property.
void CopyWithoutLastResult(TagReader& reader, TagWriter& writer) {
    AddObject(writer, reader.ObjectIdentifier(0));
    reader.Opening(1);
    writer.Opening(1);
    for (bool isLast = reader.Closes(1); !isLast;) {
        writer.Context(2, content::UnsignedNumber(reader.UnsignedNumber(2)));
        if (auto const index = reader.OptionalUnsigned(3)) {
            writer.Context(3, content::UnsignedNumber(*index));
        }
        std::uint8_t const number = reader.NextIsOpening(4) ? 4 : 5;
        Octets const result = reader.Enclosed(number);
        isLast = reader.Closes(1);
        if (!isLast) {
            writer.Opening(number);
            writer.Encoded(result);
            writer.Closing(number);
        }
    }
    writer.Closing(1);
}

Octets WithoutLastResults(Octets const& ack) {
    TagReader reader(ack);
    TagWriter writer;
    while (!reader.AtEnd()) {
        CopyWithoutLastResult(reader, writer);
    }
    return writer.Take();
}

}  // namespace

Faults::Request RequestOf(Octets const& apdu) {
    Faults::Request result;
    auto const request = ConfirmedRequest::Decode(apdu);
    if (!request || request->isSegmented) {
        return result;
    }
    result.service = ScopeOf(request->serviceChoice);
    try {
        result.object = TagReader(apdu, request->parametersAt).ObjectIdentifier(0);
    } catch (Reject const&) {
    }
    return result;
}

void Spoil(Fault const& fault, std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) try {
    if (fault.kind == FaultKind::OversizedSegments) {
        longestApdu += fault.octets;
    } else if (fault.kind == FaultKind::WrongObject && ScopeOf(serviceChoice) == FaultScope::Read) {
        content = OfNextInstance(content);
    } else if (fault.kind == FaultKind::OddList && serviceChoice == ReadPropertyMultipleChoice) {
        content = WithoutLastResults(content);
    }
} catch (Reject const&) {
    return;  // an earlier fault has changed the content
}

Octets AskingFor(std::uint32_t property, Octets const& apdu) try {
    auto const request = ConfirmedRequest::Decode(apdu);
    if (!request || request->isSegmented) {
        return apdu;
    }
    TagReader reader(apdu, request->parametersAt);
    TagWriter writer;
    AddObject(writer, reader.ObjectIdentifier(0));
    if (request->serviceChoice == ReadPropertyMultipleChoice) {
        reader.Opening(1);
        writer.Opening(1);
        writer.Context(0, content::UnsignedNumber(property));
    } else if (request->serviceChoice == ReadPropertyChoice) {
        reader.UnsignedNumber(1);
        writer.Context(1, content::UnsignedNumber(property));
    } else {
        return apdu;
    }
    auto const begin = apdu.begin() + static_cast<std::ptrdiff_t>(request->parametersAt);
    Octets changed(apdu.begin(), begin);
    Octets const start = writer.Take();
    changed.insert(changed.end(), start.begin(), start.end());
    changed.insert(changed.end(), apdu.begin() + static_cast<std::ptrdiff_t>(reader.Position()), apdu.end());
    return changed;
} catch (Reject const&) {
    return apdu;
}

std::optional<Octets> Refusal(Fault const& fault, Octets const& requestApdu) {
    auto const request = ConfirmedRequest::Decode(requestApdu);
    std::uint32_t const code = fault.code.value_or(RowOf(fault.kind).code);
    if (!request) {
        return std::nullopt;
    }
    switch (fault.kind) {
        case FaultKind::Error:
            return answers::Error(request->invokeId, request->serviceChoice,
                                  {static_cast<ErrorClass>(fault.errorClass), static_cast<ErrorCode>(code)});
        case FaultKind::Reject:
            return answers::Reject(request->invokeId, static_cast<RejectReason>(code));
        case FaultKind::Abort:
            return answers::Abort(request->invokeId, static_cast<AbortReason>(code));
        default:
            return std::nullopt;
    }
}

}  // namespace simulator::acks
