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
    kReadProperty = 12,
    kReadPropertyMultiple = 14,
    kWriteProperty = 15,
    kWritePropertyMultiple = 16
};

FaultScope scopeOf(std::uint8_t serviceChoice) {
    switch (serviceChoice) {
        case kReadProperty:
        case kReadPropertyMultiple:
            return FaultScope::Read;
        case kWriteProperty:
        case kWritePropertyMultiple:
            return FaultScope::Write;
        default:
            return FaultScope::Any;
    }
}

void addObject(TagWriter& writer, ObjectId id) {
    writer.context(0, content::objectIdentifier(id));
}

Octets ofNextInstance(Octets const& ack) {
    TagReader reader(ack);
    ObjectId id = reader.objectIdentifier(0);
    id.instance = (id.instance + 1) & ObjectId::kLastInstance;
    TagWriter writer;
    addObject(writer, id);
    Octets changed = writer.take();
    changed.insert(changed.end(), ack.begin() + static_cast<std::ptrdiff_t>(changed.size()), ack.end());
    return changed;
}

// One ReadAccessResult (clause 21) without the result of its last property.
void copyWithoutLastResult(TagReader& reader, TagWriter& writer) {
    addObject(writer, reader.objectIdentifier(0));
    reader.opening(1);
    writer.opening(1);
    for (bool isLast = reader.closes(1); !isLast;) {
        writer.context(2, content::unsignedNumber(reader.unsignedNumber(2)));
        if (auto const index = reader.optionalUnsigned(3)) {
            writer.context(3, content::unsignedNumber(*index));
        }
        std::uint8_t const number = reader.nextIsOpening(4) ? 4 : 5;
        Octets const result = reader.enclosed(number);
        isLast = reader.closes(1);
        if (!isLast) {
            writer.opening(number);
            writer.encoded(result);
            writer.closing(number);
        }
    }
    writer.closing(1);
}

Octets withoutLastResults(Octets const& ack) {
    TagReader reader(ack);
    TagWriter writer;
    while (!reader.atEnd()) {
        copyWithoutLastResult(reader, writer);
    }
    return writer.take();
}

}  // namespace

Faults::Request requestOf(Octets const& apdu) {
    Faults::Request result;
    auto const request = ConfirmedRequest::decode(apdu);
    if (!request || request->isSegmented) {
        return result;
    }
    result.service = scopeOf(request->serviceChoice);
    try {
        result.object = TagReader(apdu, request->parametersAt).objectIdentifier(0);
    } catch (Reject const&) {
    }
    return result;
}

void spoil(Fault const& fault, std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) try {
    if (fault.kind == FaultKind::OversizedSegments) {
        longestApdu += fault.octets;
    } else if (fault.kind == FaultKind::WrongObject && scopeOf(serviceChoice) == FaultScope::Read) {
        content = ofNextInstance(content);
    } else if (fault.kind == FaultKind::OddList && serviceChoice == kReadPropertyMultiple) {
        content = withoutLastResults(content);
    }
} catch (Reject const&) {
    return;  // another fault has been here before
}

Octets askingFor(std::uint32_t property, Octets const& apdu) try {
    auto const request = ConfirmedRequest::decode(apdu);
    if (!request || request->isSegmented) {
        return apdu;
    }
    TagReader reader(apdu, request->parametersAt);
    TagWriter writer;
    addObject(writer, reader.objectIdentifier(0));
    if (request->serviceChoice == kReadPropertyMultiple) {
        reader.opening(1);
        writer.opening(1);
        writer.context(0, content::unsignedNumber(property));
    } else if (request->serviceChoice == kReadProperty) {
        reader.unsignedNumber(1);
        writer.context(1, content::unsignedNumber(property));
    } else {
        return apdu;
    }
    auto const begin = apdu.begin() + static_cast<std::ptrdiff_t>(request->parametersAt);
    Octets changed(apdu.begin(), begin);
    Octets const start = writer.take();
    changed.insert(changed.end(), start.begin(), start.end());
    changed.insert(changed.end(), apdu.begin() + static_cast<std::ptrdiff_t>(reader.position()), apdu.end());
    return changed;
} catch (Reject const&) {
    return apdu;
}

std::optional<Octets> refusal(Fault const& fault, Octets const& requestApdu) {
    auto const request = ConfirmedRequest::decode(requestApdu);
    std::uint32_t const code = fault.code.value_or(rowOf(fault.kind).code);
    if (!request) {
        return std::nullopt;
    }
    switch (fault.kind) {
        case FaultKind::Error:
            return answers::error(request->invokeId, request->serviceChoice,
                                  {static_cast<ErrorClass>(fault.errorClass), static_cast<ErrorCode>(code)});
        case FaultKind::Reject:
            return answers::reject(request->invokeId, static_cast<RejectReason>(code));
        case FaultKind::Abort:
            return answers::abort(request->invokeId, static_cast<AbortReason>(code));
        default:
            return std::nullopt;
    }
}

}  // namespace simulator::acks
