#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "AnswerPdu.h"
#include "AnswerSegments.h"
#include "CauseList.h"
#include "PointTable.h"
#include "RequestLog.h"
#include "WriteLedger.h"

namespace workbench {

// A time by the monotonic clock, and the same as a file time, both in 100-nanosecond units.
struct Moment {
    long long steady = 0;
    long long wall = 0;
    long long localDiff = 0;  // local time minus UTC
    // By the monotonic clock, for a received datagram: when nobody had waited for it yet. It has come between
    // then and now.
    long long earliest = 0;
};

// How long an answer took, as well as it could be measured, in 100-nanosecond units.
struct Delay {
    long long least = 0;
    long long most = 0;
    bool IsExact() const { return most - least < 500'000; }
};

// Follows what a block and its device send each other, by the standard. The functions are called on the
// thread of the block's task. Memory is bounded, whatever the device sends.
class BlockObserver {
public:
    // The time-out of the driver for one datagram, in 100-nanosecond units. An answer that comes later is
    // late.
    static constexpr long long Timeout = 10'000'000;

    // The configuration must outlive the observer.
    explicit BlockObserver(BlockConfig const& blockConfig);

    void BeginCycle();
    // Returns the causes of the cycle.
    std::vector<Cause> EndCycle(Moment const& now);

    void Sent(int handle, standard::Endpoint const& peer, standard::Octets const& datagram,
              Moment const& now);
    // isTaken is false for a datagram that the driver does not get.
    void Received(int handle, standard::Endpoint const& sender, standard::Octets const& datagram,
                  Moment const& now, bool isTaken);
    // A call that waited for a datagram has ended without one.
    void ReceivedNothing(Moment const& now);

    // True if answers to requests that were sent through this socket may still come.
    bool Expects(int handle, Moment const& now);

    PointTable const& Points() const { return points; }
    // A cause that the caller has found.
    void AddCause(CauseKind kind, VariableConfig const* variable, std::string const& text, Moment const& now);
    // The writes at a priority that the device has not refused.
    WriteLedger const& Held() const { return held; }

private:
    enum class Expected { Nothing, Answer, Segment };

    void Enter(standard::ObjectId const& object);
    void Apdu(int handle, standard::Octets const& apdu, Moment const& now, bool isTaken);
    void CheckStation(standard::Endpoint const& sender, standard::Npdu const& npdu, Moment const& now);
    void CheckAnyStation(standard::Endpoint const& sender, standard::NetworkAddress const& source,
                         Moment const& now);
    void Stray(int handle, standard::AnswerPdu const& pdu, Moment const& now);
    void Late(SeenRequest& request, standard::AnswerPdu const& pdu, Moment const& now);
    void Answer(SeenRequest& request, standard::AnswerPdu const& pdu, standard::Octets const& apdu,
                Moment const& now);
    void Segment(SeenRequest& request, standard::AnswerPdu const& pdu, standard::Octets const& apdu,
                 Moment const& now);
    void ReadAnswer(SeenRequest& request, standard::Octets const& apdu, std::size_t at, Moment const& now);
    void CheckResult(SeenRequest const& request, standard::ReadResult const& result, Moment const& now);
    bool Matters(standard::PropertyReference const& reference) const;
    void CheckMissing(SeenRequest const& request, std::vector<standard::ReadResult> const& results,
                      Moment const& now);
    void ReadFailed(SeenRequest const& request, standard::Failure const& failure, Moment const& now);
    void NoteWrite(SeenRequest const& request);
    void WriteAnswered(SeenRequest const& request, standard::AnswerPdu const& pdu);
    void Add(CauseKind kind, Moment const& now, std::string const& text);
    void AddFor(CauseKind kind, standard::ObjectId const& object, Moment const& now, std::string const& text);
    void AddLate(Moment const& now);
    void AddSilence(Moment const& now);

    BlockConfig const& block;
    PointTable points;
    CauseList causes;
    RequestLog requests;
    AnswerSegments segments;
    Expected expected = Expected::Nothing;
    // Which station answers for an address without a MAC address.
    std::optional<standard::NetworkAddress> station;

    // Of the current cycle
    unsigned long long cycle = 0;
    unsigned long long unanswered = 0;  // without those that were answered late
    bool isAnsweredSince =
        false;  // an answer, even a late one, has come after the latest request without one
    unsigned long long lateCount = 0;
    Delay delay;                // the longest of a late answer, of those that were measured best
    long long silentSince = 0;  // a file time; 0 while the device answers
    standard::ObjectId silentObject;

    WriteLedger held;
};

}  // namespace workbench
