#pragma once

#include <deque>

#include "Faults.h"
#include "NetworkLayer.h"
#include "Station.h"

namespace simulator {

// A datagram to be sent once `delay` has passed; `fromElsewhere`, from another address than the device's.
struct Delivery {
    Datagram datagram;
    std::chrono::milliseconds delay{0};
    bool fromElsewhere = false;
};

// A station whose answers to confirmed requests go wrong as its faults say; without faults it is the station.
// Whatever else it sends, such as I-Am, stays as it is. Nothing makes it throw or crash, and what it
// remembers is bounded: MostExchanges exchanges and as many peers, of each a datagram or two.
//
// A fault meets a whole exchange: the answer, all its segments, and what is repeated of them. Of several
// faults of one exchange those of segments act first, and then the others, as they were added. An answer that
// a fault of a segment needs in segments and that is not in segments passes untouched; EndlessSegments makes
// a plain ComplexACK the first segment. WrongObject, UnaskedProperty and OddList change the ack before it is
// cut into segments, and only acks of reads; OddList only those of ReadPropertyMultiple. A request that
// Silence, NetworkMessage, Error, Reject or Abort meets is not carried out; with all other faults a write is,
// whatever becomes of its answer. PreviousAnswer gives the first datagram that the exchange before with this
// address, from whichever port, should have got, nothing if there was none, and no further segments.
// LostSegment goes on with the next segment as if the missing one had been acknowledged. SegmentsAtOnce sends
// all segments, up to 512, in answer to the request and nothing for the acknowledgements. EndlessSegments
// answers each Segment-ACK with a window of further segments until the fault is cleared or over, or the
// client aborts; then with nothing. Without acknowledgement none follow: a client that takes one datagram for
// each of its own is kept busy longest by exactly one answer to each.
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
    // A request that faults have met.
    struct Exchange {
        Peer peer;
        std::uint8_t invokeId = 0;
        std::vector<Faults::Hit> hits;
        bool isOver = false;            // nothing more is to be sent
        std::optional<Octets> endless;  // the first segment of an answer without end
        std::uint64_t sent = 0;         // segments of that
    };

    // The answer to the last request of an address, as it should have been.
    struct Memory {
        std::uint32_t address = 0;
        Octets answer;
    };

    using Deliveries = std::vector<Delivery>;

    Deliveries ReceiveRequest(Datagram const& datagram, NetworkLayer::Indication const& indication,
                              Moment const& now);
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
    std::optional<Octets> previous;    // the answer before, of the address that is being answered
    Exchange const* served = nullptr;  // while the station makes its answer
};

}  // namespace simulator
