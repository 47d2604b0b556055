#pragma once

#include <deque>

#include "Faults.h"
#include "NetworkLayer.h"
#include "Station.h"

namespace simulator {

// A datagram to be sent after `delay`, with `fromElsewhere` from another address than that of the device.
struct Delivery {
    Datagram datagram;
    std::chrono::milliseconds delay{0};
    bool fromElsewhere = false;
};

// A station that disturbs its answers to requests by its faults. Without faults it is the station, and
// nothing else that it sends, such as the answers of a router, is disturbed. No datagram makes it throw or
// crash. Its memory is bounded: it keeps MostExchanges exchanges and as many peers, with one or two datagrams
// each.
//
// A fault applies to a whole exchange: the answer, all its segments and their repetitions. Of several faults
// of an exchange, those of segments act first, the others in the order of Faults::Add.
//
// - A request to which Silence, NetworkMessage, Error, Reject or Abort applies is not carried out. With any
//   other fault a write is carried out.
// - WrongObject, UnaskedProperty and OddList change the ack of a read before it is segmented, OddList only
//   that of a ReadPropertyMultiple.
// - A fault of a segment does not change an unsegmented answer. Only EndlessSegments makes a ComplexACK the
//   first segment of a longer one.
// - PreviousAnswer sends the first datagram of the answer to the previous request from this IP address,
//   whatever its port, and no further segments. Without a previous request it sends nothing.
// - LostSegment sends the next segment as if the missing one had been acknowledged.
// - SegmentsAtOnce sends all segments, up to 512, after the request, and nothing after the acknowledgements.
// - EndlessSegments answers each Segment-ACK with a window of further segments, until the fault ends or the
//   client aborts. Without a Segment-ACK it sends none. A client that receives one datagram for each of its
//   own is held longest by exactly one segment for each Segment-ACK.
class FaultyStation {
public:
    static constexpr std::size_t MostExchanges = 32;

    // With the faults of the device's settings.
    explicit FaultyStation(Device device);

    std::vector<Delivery> Receive(Datagram const& datagram, Moment const& now);
    std::vector<Delivery> Tick(Moment const& now);

    Faults& GetFaults() { return faults; }
    Faults const& GetFaults() const { return faults; }
    Device const& GetDevice() const { return station.GetDevice(); }
    void OnWrite(Device::WriteObserver observer) { station.OnWrite(std::move(observer)); }

private:
    // A request to which faults apply.
    struct Exchange {
        Peer peer;
        std::uint8_t invokeId = 0;
        std::vector<Faults::Hit> hits;
        bool isOver = false;            // no further datagram is sent
        std::optional<Octets> endless;  // the first segment of an answer without end
        std::uint64_t sent = 0;         // segments of that
    };

    // The answer to the last request of an address, without its faults.
    struct Memory {
        std::uint32_t address = 0;
        Octets answer;
    };

    using Deliveries = std::vector<Delivery>;

    Deliveries ReceiveRequest(Datagram const& datagram, NetworkLayer::Indication const& indication,
                              Moment const& now);
    Deliveries ReceiveUnconfirmed(Datagram const& datagram, Moment const& now);
    Deliveries ReceiveSegmentAck(Datagram const& datagram, NetworkLayer::Indication const& indication,
                                 Moment const& now);
    Deliveries Serve(Datagram const& datagram, NetworkLayer::Indication const& indication, Exchange& exchange,
                     Moment const& now);
    Deliveries ContinueEndless(Exchange& exchange, std::uint8_t acknowledged, std::uint8_t window);

    Deliveries Disturbed(Exchange& exchange, Deliveries deliveries, Moment const& now);
    void Disturb(Exchange& exchange, Faults::Hit const& hit, Deliveries& deliveries, Moment const& now);
    void DisturbEach(Faults::Hit const& hit, Deliveries& deliveries, Moment const& now);
    Octets Garbage(Faults::Hit const& hit);
    void Recall(Exchange& exchange, Deliveries& deliveries);
    void MakeEndless(Exchange& exchange, Fault const& fault, Deliveries& deliveries);
    void LoseSegment(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                     Moment const& now);
    void SwapSegments(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                      Moment const& now);
    void AddAllSegments(Exchange& exchange, Deliveries& deliveries, Moment const& now);
    Deliveries Acknowledged(Exchange const& exchange, std::uint32_t segment, Moment const& now);
    void FilterAck(std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) const;

    Exchange* ExchangeOf(Datagram const& answer);
    Exchange* Find(Peer const& peer, std::uint8_t invokeId);
    void Forget(Peer const& peer, std::uint8_t invokeId);
    void Remember(std::uint32_t address, Deliveries const& deliveries);

    Station station;
    NetworkLayer network;
    Faults faults;
    std::deque<Exchange> exchanges;
    std::deque<Memory> memories;
    std::optional<Octets> previous;    // the previous answer to the address of the present request
    Exchange const* served = nullptr;  // not null while the station makes the answer
};

}  // namespace simulator
