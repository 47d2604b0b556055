#include "Answers.h"

#include "Content.h"
#include "TagWriter.h"

namespace standard::answers {

Octets SimpleAck(std::uint8_t invokeId, std::uint8_t serviceChoice) {
    return {0x20, static_cast<char>(invokeId), static_cast<char>(serviceChoice)};
}

Octets ComplexAck(std::uint8_t invokeId, std::uint8_t serviceChoice, Octets const& content) {
    OctetWriter writer;
    writer.U8(0x30);
    writer.U8(invokeId);
    writer.U8(serviceChoice);
    writer.Append(content);
    return writer.Take();
}

Octets Error(std::uint8_t invokeId, std::uint8_t serviceChoice, ServiceError const& error) {
    TagWriter codes;
    codes.Application(ApplicationTag::Enumerated,
                      content::UnsignedNumber(static_cast<std::uint64_t>(error.errorClass)));
    codes.Application(ApplicationTag::Enumerated,
                      content::UnsignedNumber(static_cast<std::uint64_t>(error.errorCode)));
    OctetWriter writer;
    writer.U8(0x50);
    writer.U8(invokeId);
    writer.U8(serviceChoice);
    writer.Append(codes.Take());
    return writer.Take();
}

Octets Reject(std::uint8_t invokeId, RejectReason reason) {
    return {0x60, static_cast<char>(invokeId), static_cast<char>(reason)};
}

Octets Abort(std::uint8_t invokeId, AbortReason reason) {
    return {0x71, static_cast<char>(invokeId), static_cast<char>(reason)};
}

}  // namespace standard::answers
