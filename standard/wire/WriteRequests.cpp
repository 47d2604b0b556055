#include "WriteRequests.h"

#include "AnswerPdu.h"
#include "Content.h"
#include "PropertyId.h"
#include "TagWriter.h"

namespace standard::requests {

Octets Relinquish(std::uint8_t invokeId, ObjectId const& object, std::uint32_t priority) {
    constexpr std::uint8_t confirmedRequest = 0x00;
    constexpr std::uint8_t limits = 0x05;
    TagWriter parameters;
    parameters.Context(0, content::ObjectIdentifier(object));
    parameters.Context(1, content::UnsignedNumber(static_cast<std::uint32_t>(PropertyId::Present_Value)));
    parameters.Opening(3);
    parameters.Null();
    parameters.Closing(3);
    parameters.Context(4, content::UnsignedNumber(priority));
    OctetWriter writer;
    writer.U8(confirmedRequest);
    writer.U8(limits);
    writer.U8(invokeId);
    writer.U8(static_cast<std::uint8_t>(ServiceChoice::WriteProperty));
    writer.Append(parameters.Take());
    return writer.Take();
}

}  // namespace standard::requests
