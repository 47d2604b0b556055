#include "ReadRequests.h"

#include "AnswerPdu.h"
#include "Content.h"
#include "TagWriter.h"

namespace standard::requests {

namespace {

// Segmented-response-accepted; more than 64 segments of up to 1476 octets.
constexpr std::uint8_t Head = 0x02;
constexpr std::uint8_t Limits = 0x75;

Octets Request(std::uint8_t invokeId, ServiceChoice service, Octets const& parameters) {
    OctetWriter writer;
    writer.U8(Head);
    writer.U8(Limits);
    writer.U8(invokeId);
    writer.U8(static_cast<std::uint8_t>(service));
    writer.Append(parameters);
    return writer.Take();
}

void WriteProperty(TagWriter& writer, std::uint8_t number, PropertyReference const& reference) {
    writer.Context(number, content::UnsignedNumber(reference.property));
    if (reference.index) {
        writer.Context(static_cast<std::uint8_t>(number + 1), content::UnsignedNumber(*reference.index));
    }
}

}  // namespace

Octets ReadProperty(std::uint8_t invokeId, PropertyReference const& reference) {
    TagWriter writer;
    writer.Context(0, content::ObjectIdentifier(reference.object));
    WriteProperty(writer, 1, reference);
    return Request(invokeId, ServiceChoice::ReadProperty, writer.Take());
}

Octets ReadPropertyMultiple(std::uint8_t invokeId, std::vector<PropertyReference> const& references) {
    TagWriter writer;
    for (std::size_t i = 0; i < references.size(); ++i) {
        bool const isFirst = i == 0 || !(references[i].object == references[i - 1].object);
        if (isFirst && i > 0) {
            writer.Closing(1);
        }
        if (isFirst) {
            writer.Context(0, content::ObjectIdentifier(references[i].object));
            writer.Opening(1);
        }
        WriteProperty(writer, 0, references[i]);
    }
    writer.Closing(1);
    return Request(invokeId, ServiceChoice::ReadPropertyMultiple, writer.Take());
}

Octets SegmentAck(std::uint8_t invokeId, std::uint8_t sequenceNumber, std::uint8_t windowSize,
                  bool isNegative) {
    OctetWriter writer;
    writer.U8(isNegative ? 0x42 : 0x40);
    writer.U8(invokeId);
    writer.U8(sequenceNumber);
    writer.U8(windowSize);
    return writer.Take();
}

Octets Abort(std::uint8_t invokeId, AbortReason reason) {
    return {0x70, static_cast<char>(invokeId), static_cast<char>(reason)};
}

std::size_t SizeOfReadPropertyMultiple(std::vector<PropertyReference> const& references) {
    return ReadPropertyMultiple(0, references).size();
}

}  // namespace standard::requests
