// The decoders of what is asked and answered when devices are looked for: Who-Is and its relatives, the
// messages about routers, the BVLC of broadcasts and foreign devices. For every input: what is decoded is
// encoded to something that is decoded to the same; ranges are in order and instances within their limits; a
// datagram has one meaning; there are no exceptions.
#include <cstddef>
#include <cstdint>

#include "Bvlc.h"
#include "NetworkMessages.h"
#include "Npdu.h"
#include "Require.h"
#include "UnconfirmedServices.h"

using namespace standard;
using fuzz::Require;

namespace {

void CheckRange(std::optional<InstanceRange> const& range) {
    Require(!range || (range->low <= range->high && range->high <= ObjectId::LastInstance),
            "a range is in order and within its limits");
}

template <class Message>
bool IsStable(std::optional<Message> const& message) {
    if (!message) {
        return true;
    }
    Octets const encoded = message->Encode();
    auto const again = Message::Decode(encoded);
    return again && again->Encode() == encoded;
}

void CheckServices(Octets const& apdu) {
    auto const whoIs = WhoIs::Decode(apdu);
    auto const whoHas = WhoHas::Decode(apdu);
    auto const iAm = IAm::Decode(apdu);
    auto const iHave = IHave::Decode(apdu);
    Require(IsStable(whoIs) && IsStable(whoHas) && IsStable(iAm) && IsStable(iHave),
            "a service is encoded as it was decoded");
    Require((whoIs ? 1 : 0) + (whoHas ? 1 : 0) + (iAm ? 1 : 0) + (iHave ? 1 : 0) <= 1,
            "an APDU is one service");
    Require(!iAm || (IsIAm(apdu) && iAm->device.type == 8), "an I-Am is of a device");
    CheckRange(whoIs ? whoIs->range : std::nullopt);
    CheckRange(whoHas ? whoHas->range : std::nullopt);
}

template <class Message>
bool IsTheSame(std::optional<Message> const& message, Octets const& content) {
    return !message || message->Encode() == content;
}

void CheckMessages(Octets const& content) {
    Require(IsTheSame(WhoIsRouterToNetwork::Decode(content), content) &&
                IsTheSame(IAmRouterToNetwork::Decode(content), content) &&
                IsTheSame(RejectMessageToNetwork::Decode(content), content) &&
                IsTheSame(WhatIsNetworkNumber::Decode(content), content) &&
                IsTheSame(NetworkNumberIs::Decode(content), content),
            "a network message is encoded to the same octets");
}

void CheckDatagram(Octets const& octets) {
    bvlc::Result const result = bvlc::Receive({{0x0A000001, 47808}, octets});
    auto const code = bvlc::ResultCodeOf(octets);
    auto const seconds = bvlc::RegisteredSeconds(octets);
    auto const distributed = bvlc::DistributedNpdu(octets);
    int const meanings =
        (result.message ? 1 : 0) + (code ? 1 : 0) + (seconds ? 1 : 0) + (distributed ? 1 : 0);
    Require(meanings <= 1, "a datagram has one meaning");
    Require(!code || bvlc::ResultOf(*code) == octets, "a result is encoded to the same octets");
    Require(!seconds || bvlc::RegisterForeignDevice(*seconds) == octets, "and so is a registration");
    Require(!distributed || bvlc::DistributeBroadcast(*distributed) == octets, "and a distribution");
    Require(!code || !bvlc::ResultText(*code).empty(), "a result has a text");
    auto const npdu = result.message ? Npdu::Decode(result.message->npdu) : std::nullopt;
    if (npdu) {
        npdu->isNetworkMessage ? CheckMessages(npdu->content) : CheckServices(npdu->content);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Octets const octets(data, data + size);
    CheckServices(octets);
    CheckMessages(octets);
    CheckDatagram(octets);
    return 0;
}
