#pragma once

#include <functional>
#include <vector>

#include "ConfirmedRequest.h"
#include "Device.h"
#include "NetworkLayer.h"
#include "SegmentedAnswer.h"
#include "Standard.h"

namespace simulator {

// The application layer of the device (clause 5): finds the service of a request, makes the answer, and keeps
// the answers that are sent in segments.
class ApplicationLayer {
public:
    // The device must outlive the layer.
    explicit ApplicationLayer(Device& servedDevice) : device(servedDevice) {}

    // Called with the parameters of each ComplexACK before they are segmented, and with the limit of its
    // APDUs in octets, 50 or more. It can change both. The parameters must not become empty, nor the limit 0.
    using AckFilter =
        std::function<void(std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu)>;
    void OnAck(AckFilter filter) { onAck = std::move(filter); }

    // Each returns the APDUs to be sent now, in order.
    std::vector<Answer> Receive(NetworkLayer::Indication const& indication, Moment const& now);
    std::vector<Answer> Tick(Moment const& now);

private:
    struct Transaction {
        Peer peer;
        std::uint8_t priority;
        SegmentedAnswer answer;
    };

    using Transactions = std::vector<Transaction>;

    std::vector<Octets> ReceiveConfirmed(NetworkLayer::Indication const& indication, Moment const& now);
    std::vector<Octets> Serve(ConfirmedRequest const& request, NetworkLayer::Indication const& indication,
                              Moment const& now);
    std::size_t LongestApdu(ConfirmedRequest const& request) const;
    std::vector<Octets> AnswerInSegments(ConfirmedRequest const& request,
                                         NetworkLayer::Indication const& indication, Octets content,
                                         std::size_t longest, Moment const& now);
    std::vector<Octets> ReceiveSegmentAck(NetworkLayer::Indication const& indication, Moment const& now);
    void ReceiveAbort(NetworkLayer::Indication const& indication);
    Transactions::iterator Find(Peer const& peer, std::uint8_t invokeId);
    void Forget(Peer const& peer, std::uint8_t invokeId);

    Device& device;
    Transactions transactions;  // at most a few
    AckFilter onAck;
};

}  // namespace simulator
