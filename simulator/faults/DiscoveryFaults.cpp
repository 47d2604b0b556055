#include "DiscoveryFaults.h"

#include "Bvlc.h"
#include "Npdu.h"
#include "UnconfirmedServices.h"

namespace simulator::discovery {

namespace {

Octets OfInstance(Octets const& apdu, std::uint32_t instance) {
    if (auto iAm = IAm::Decode(apdu)) {
        iAm->device.instance = instance;
        return iAm->Encode();
    }
    if (auto iHave = IHave::Decode(apdu)) {
        iHave->device.instance = instance;
        return iHave->Encode();
    }
    return apdu;
}

}  // namespace

void Spoil(Fault const& fault, Octets& datagram) {
    auto const message = bvlc::Receive({{}, datagram}).message;
    auto npdu = message ? Npdu::Decode(message->npdu) : std::nullopt;
    if (!npdu || npdu->isNetworkMessage) {
        return;
    }
    std::uint32_t const code = fault.code.value_or(RowOf(fault.kind).code);
    if (fault.kind == FaultKind::OtherInstance) {
        npdu->content = OfInstance(npdu->content, code);
    } else if (fault.kind == FaultKind::WrongStation && npdu->source) {
        char& last = npdu->source->mac.back();
        last = static_cast<char>(OctetValue(last) + code);
    }
    datagram = message->isBroadcast ? bvlc::Broadcast(npdu->Encode()) : bvlc::Unicast(npdu->Encode());
}

}  // namespace simulator::discovery
