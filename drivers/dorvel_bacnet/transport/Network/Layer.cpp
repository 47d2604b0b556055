#include "Network/Layer.h"

#include <stdexcept>
#include <utility>

#include "Network/Message.h"
#include "VmacAddress.h"

namespace Network {

Layer::Layer(VirtualDataLink::IDataLinkLayer* ownedDataLink) : dataLink(ownedDataLink) {}

Layer* Layer::GetDefault() {
    return new Layer(VirtualDataLink::IDataLinkLayer::GetDefault());
}

std::vector<char> Layer::ResolveHostName(char const* name, unsigned short port) {
    VmacAddress address = DataLink().ResolveHostName(name);
    address.SetPort(port);
    return address.GetBytes();
}

void Layer::Send(NDataUnitRequest const& request) {
    DataLink().Send({VmacAddress(request.physicalDestination, false), ToNpdu(request)});
}

NDataUnitIndication Layer::Receive() {
    VirtualDataLink::DuIndication link = DataLink().Receive();
    Message message = Message::Parse(std::move(link.data));

    NDataUnitIndication indication;
    indication.physicalSource = link.address.GetBytes();
    indication.hasSource = message.controlInformation.hasSource;
    indication.source = std::move(message.controlInformation.source);
    indication.expectingReply = message.controlInformation.expectingReply;
    indication.data = std::move(message.data);
    return indication;
}

VirtualDataLink::IDataLinkLayer& Layer::DataLink() {
    if (!dataLink) {
        throw std::runtime_error("network layer has no data link");
    }
    return *dataLink;
}

}  // namespace Network
