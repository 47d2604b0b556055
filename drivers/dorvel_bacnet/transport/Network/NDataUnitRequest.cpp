#include "Network/NDataUnitRequest.h"

#include "Network/ControlInformation.h"
#include "Octets.h"

namespace Network {

namespace {

constexpr unsigned char MostHops = 0xFF;

}  // namespace

std::vector<char> ToNpdu(NDataUnitRequest const& request) {
    ControlInformation information;
    information.priority = request.priority;
    information.expectingReply = request.expectingReply;
    if (request.hasDestination) {
        information.hasDestination = true;
        information.destination = request.destination;
        information.hopCount = MostHops;
    }
    std::vector<char> npdu = information.GetBytes();
    AppendOctets(npdu, request.data);
    return npdu;
}

}  // namespace Network
