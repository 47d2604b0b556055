#include "Answers.h"

#include "Content.h"
#include "TagWriter.h"

namespace standard::answers {

Octets simpleAck(std::uint8_t invokeId, std::uint8_t serviceChoice) {
    return {0x20, static_cast<char>(invokeId), static_cast<char>(serviceChoice)};
}

Octets complexAck(std::uint8_t invokeId, std::uint8_t serviceChoice, Octets const& content) {
    OctetWriter writer;
    writer.u8(0x30);
    writer.u8(invokeId);
    writer.u8(serviceChoice);
    writer.append(content);
    return writer.take();
}

Octets error(std::uint8_t invokeId, std::uint8_t serviceChoice, ServiceError const& error) {
    TagWriter codes;
    codes.application(ApplicationTag::Enumerated,
                      content::unsignedNumber(static_cast<std::uint64_t>(error.errorClass)));
    codes.application(ApplicationTag::Enumerated,
                      content::unsignedNumber(static_cast<std::uint64_t>(error.errorCode)));
    OctetWriter writer;
    writer.u8(0x50);
    writer.u8(invokeId);
    writer.u8(serviceChoice);
    writer.append(codes.take());
    return writer.take();
}

Octets reject(std::uint8_t invokeId, RejectReason reason) {
    return {0x60, static_cast<char>(invokeId), static_cast<char>(reason)};
}

Octets abort(std::uint8_t invokeId, AbortReason reason) {
    return {0x71, static_cast<char>(invokeId), static_cast<char>(reason)};
}

}  // namespace standard::answers
