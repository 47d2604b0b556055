#include "FormRequest.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "ConfirmedRequestPdu.h"
#include "ObjectIdentifier.h"
#include "ReadPropertyMultipleRequest.h"

namespace dorvel::BACnet {

namespace {

constexpr char SegmentAckType = 0x40;
constexpr char WindowSize = 1;

std::vector<PropertyIdentifierEnum> RequestedProperties(std::vector<tagReadData*> const& tags) {
    std::vector<PropertyIdentifierEnum> properties;
    properties.reserve(tags.size() + 1);
    for (tagReadData const* tag : tags) {
        properties.push_back(tag->address->propertyId);
    }
    auto const end = properties.end();
    if (std::find(properties.begin(), end, PropertyIdentifierEnum::Status_Flags) == end) {
        properties.push_back(PropertyIdentifierEnum::Status_Flags);
    }
    return properties;
}

}  // namespace

Network::NDataUnitRequest AddressedRequest(std::vector<char> apdu, std::vector<char> const& linkAddress,
                                           Network::Address const& remoteAddress) {
    Network::NDataUnitRequest request;
    request.data = std::move(apdu);
    request.expectingReply = true;
    request.physicalDestination = linkAddress;
    if (remoteAddress.network != 0) {
        request.hasDestination = true;
        request.destination = remoteAddress;
    }
    return request;
}

std::vector<char> FormMessage(char& invokeId, std::vector<tagReadData*> const& tags) {
    auto properties = RequestedProperties(tags);
    tagAddress const& address = *tags.at(0)->address;
    ObjectIdentifier const object(address.objectType, static_cast<unsigned int>(address.objectNumber));
    ++invokeId;
    ConfirmedRequestPdu const pdu(
        invokeId, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, true, MaxSegmentsAcceptedEnum::MoreThan64,
        MaxApduLengthAcceptedEnum::Octets1024,
        std::make_unique<ReadPropertyMultipleRequest>(object, std::move(properties)));
    return pdu.GetBytes();
}

Network::NDataUnitRequest FormRequest(char& invokeId, std::vector<tagReadData*> const& tags,
                                      std::vector<char> const& linkAddress,
                                      Network::Address const& remoteAddress) {
    return AddressedRequest(FormMessage(invokeId, tags), linkAddress, remoteAddress);
}

Network::NDataUnitRequest FormSegmentAckRequest(char const& invokeId, char sequenceNumber,
                                                std::vector<char> const& linkAddress,
                                                Network::Address const& remoteAddress) {
    return AddressedRequest({SegmentAckType, invokeId, sequenceNumber, WindowSize}, linkAddress,
                            remoteAddress);
}

}  // namespace dorvel::BACnet
