#include "WhoIs.h"

#include "Refusal.h"
#include "TagReader.h"

namespace simulator {

namespace {

constexpr std::uint8_t UnconfirmedRequestPdu = 0x10;
constexpr std::uint8_t IAmChoice = 0;
constexpr std::uint8_t WhoIsChoice = 8;

// Both limits or neither are given; each is a device instance.
bool IsMeant(TagReader& request, std::uint32_t instance) {
    if (request.AtEnd()) {
        return true;
    }
    std::uint32_t const low = request.UnsignedNumber(0);
    std::uint32_t const high = request.UnsignedNumber(1);
    request.ExpectEnd();
    return low <= instance && instance <= high && high <= ObjectId::LastInstance;
}

Octets IAm(Device const& device) {
    DeviceSettings const& settings = device.Settings();
    Octets apdu{static_cast<char>(UnconfirmedRequestPdu), static_cast<char>(IAmChoice)};
    TagWriter parameters;
    for (ValuePtr const& value :
         {FixedObjectIdentifier(device.Id()), FixedUnsigned(settings.maxApduLength),
          FixedEnumerated(settings.segmentationSupported), FixedUnsigned(settings.vendorIdentifier)}) {
        value->Encode(parameters, {});
    }
    Octets const encoded = parameters.Take();
    apdu.insert(apdu.end(), encoded.begin(), encoded.end());
    return apdu;
}

}  // namespace

// A mistake in an unconfirmed request must not be answered.
std::optional<Octets> AnswerUnconfirmed(Octets const& apdu, Device const& device) try {
    OctetReader head(apdu);
    if (head.U8() != UnconfirmedRequestPdu || head.U8() != WhoIsChoice) {
        return std::nullopt;
    }
    TagReader request(apdu, 2);
    return IsMeant(request, device.Id().instance) ? std::optional<Octets>(IAm(device)) : std::nullopt;
} catch (EndOfOctets const&) {
    return std::nullopt;
} catch (Reject const&) {
    return std::nullopt;
}

}  // namespace simulator
