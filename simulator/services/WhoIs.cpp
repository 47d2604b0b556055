#include "WhoIs.h"

#include "Refusal.h"
#include "TagReader.h"

namespace simulator {

namespace {

constexpr std::uint8_t kUnconfirmedRequest = 0x10;
constexpr std::uint8_t kIAm = 0;
constexpr std::uint8_t kWhoIs = 8;

// Both limits or neither are given; each is a device instance.
bool isMeant(TagReader& request, std::uint32_t instance) {
    if (request.atEnd()) {
        return true;
    }
    std::uint32_t const low = request.unsignedNumber(0);
    std::uint32_t const high = request.unsignedNumber(1);
    request.expectEnd();
    return low <= instance && instance <= high && high <= ObjectId::kLastInstance;
}

Octets iAm(Device const& device) {
    DeviceSettings const& settings = device.settings();
    Octets apdu{static_cast<char>(kUnconfirmedRequest), static_cast<char>(kIAm)};
    TagWriter parameters;
    for (ValuePtr const& value :
         {fixedObjectIdentifier(device.id()), fixedUnsigned(settings.maxApduLength),
          fixedEnumerated(settings.segmentationSupported), fixedUnsigned(settings.vendorIdentifier)}) {
        value->encode(parameters, {});
    }
    Octets const encoded = parameters.take();
    apdu.insert(apdu.end(), encoded.begin(), encoded.end());
    return apdu;
}

}  // namespace

// What is wrong in an unconfirmed request is nobody's to be told.
std::optional<Octets> answerUnconfirmed(Octets const& apdu, Device const& device) try {
    OctetReader head(apdu);
    if (head.u8() != kUnconfirmedRequest || head.u8() != kWhoIs) {
        return std::nullopt;
    }
    TagReader request(apdu, 2);
    return isMeant(request, device.id().instance) ? std::optional<Octets>(iAm(device)) : std::nullopt;
} catch (EndOfOctets const&) {
    return std::nullopt;
} catch (Reject const&) {
    return std::nullopt;
}

}  // namespace simulator
