#include "BlockObserver.h"

#include <algorithm>
#include <utility>

#include "Frame.h"
#include "ObjectNames.h"
#include "TimeText.h"
#include "Whereabouts.h"

namespace workbench {

using standard::AnswerPdu;
using standard::ObjectId;
using standard::Octets;

namespace {

constexpr unsigned FirstAnswerType = 2;  // APDUs of lower types are requests

// How long an answer is waited for on a socket that the driver has left.
constexpr long long Patience = 10 * BlockObserver::Timeout;

// "1.50 s", or "1.00 s to 2.00 s".
std::string DelayText(Delay const& delay) {
    return delay.IsExact() ? DurationText(delay.most)
                           : DurationText(delay.least) + " to " + DurationText(delay.most);
}

bool IsRequest(Octets const& apdu) {
    return !apdu.empty() && standard::OctetValue(apdu.front()) >> 4 < FirstAnswerType;
}

}  // namespace

BlockObserver::BlockObserver(BlockConfig const& blockConfig) : block(blockConfig), points(blockConfig) {}

void BlockObserver::BeginCycle() {
    points.BeginCycle();
    unanswered = lateCount = 0;
    delay = {};
    isAnsweredSince = false;
}

std::vector<Cause> BlockObserver::EndCycle(Moment const& now) {
    if (lateCount > 0) {
        causes.Add(CauseKind::Late, "",
                   "answers come " + DelayText(delay) + " after the request, later than " +
                       DurationText(Timeout) + "; dropped: " + std::to_string(lateCount),
                   now.wall);
    } else if (unanswered > 0) {
        AddSilence(now);
    }
    return causes.Finish();
}

void BlockObserver::AddSilence(Moment const& now) {
    std::string const requestsText =
        "in this cycle: " + std::to_string(unanswered) + ", latest: " + standard::ObjectText(silentObject);
    causes.Add(CauseKind::Silent, "",
               isAnsweredSince ? "requests without an answer " + requestsText
                               : "no answer since " + ClockTime(silentSince, now.localDiff) + ", requests " +
                                     requestsText,
               isAnsweredSince ? now.wall : silentSince);
}

void BlockObserver::Enter(ObjectId const& object) {
    Here().object = points.AnyOf(object);
    Here().variable = points.OnlyOf(object);
}

void BlockObserver::Sent(int handle, standard::Endpoint const& peer, Octets const& datagram,
                         Moment const& now) {
    std::optional<SeenRequest> request = SeenRequest::Decode(datagram);
    if (!request) {
        // A Segment-ACK: the next segment is expected unless the last one has come.
        bool const wantsMore = !segments.IsEmpty() && !segments.HasEnd();
        expected = wantsMore ? Expected::Segment : Expected::Nothing;
        return;
    }
    request->handle = handle;
    request->peer = peer;
    request->steady = now.steady;
    segments.Clear();
    expected = Expected::Answer;
    // The runtime announces each write, so the variable is known already.
    bool const isKnown = request->IsWrite() && Here().variable && Here().variable->write;
    if (!isKnown) {
        Enter(request->object);
    }
    written = request->IsWrite() ? Here().variable : nullptr;
    if (written) {
        points.WriteOf(*written) = {request->write->values, false, {}, false};
        points.WriteOf(*written).property = request->write->reference.property;
    }
    requests.Add(*std::move(request));
}

void BlockObserver::ReceivedNothing(Moment const& now) {
    SeenRequest const* const request = requests.Latest();
    if (!request || expected == Expected::Nothing) {
        return;
    }
    if (expected == Expected::Segment && segments.Count() <= SegmentCollector::Most) {
        AddFor(CauseKind::MissingSegment, request->object, now,
               "segment " + std::to_string(segments.Missing().value_or(0)) + " of the answer does not come");
    } else if (expected == Expected::Answer) {
        ++unanswered;
        isAnsweredSince = false;
        silentObject = request->object;
        silentSince = silentSince != 0 ? silentSince : now.wall - (now.steady - request->steady);
    }
    expected = Expected::Nothing;
}

bool BlockObserver::Expects(int handle, Moment const& now) {
    SeenRequest const* const request = requests.Latest();
    return request && request->handle == handle && !request->isAnswered &&
           now.steady - request->steady < Patience;
}

void BlockObserver::Received(int handle, standard::Endpoint const& sender, Octets const& datagram,
                             Moment const& now, bool isTaken) {
    std::string const mistake = FrameMistake(datagram);
    if (!mistake.empty()) {
        Add(CauseKind::BadFrame, now, "a datagram is not a BACnet/IP message: " + mistake);
        return;
    }
    std::optional<standard::Npdu> const npdu = standard::Npdu::Decode(NpduOf(datagram));
    if (!npdu) {
        Add(CauseKind::BadAnswer, now, "a datagram has no valid network-layer header");
    } else if (npdu->isNetworkMessage) {
        Add(CauseKind::NetworkMessage, now, "a message of the network layer: " + NetworkMessageText(*npdu));
    } else if (!IsRequest(npdu->content)) {
        CheckStation(sender, *npdu, now);
        Apdu(handle, npdu->content, now, isTaken);
    }
}

bool BlockObserver::CheckStation(standard::Endpoint const& sender, standard::Npdu const& npdu,
                                 Moment const& now) {
    SeenRequest const* const request = requests.Latest();
    if (!request || (sender == request->peer && npdu.source == request->destination)) {
        return true;
    }
    Add(CauseKind::OtherStation, now,
        StationText(sender.Text(), npdu.source) + " answers in place of " +
            StationText(request->peer.Text(), request->destination));
    return false;
}

void BlockObserver::Apdu(int handle, Octets const& apdu, Moment const& now, bool isTaken) {
    std::optional<AnswerPdu> const pdu = AnswerPdu::Decode(apdu);
    SeenRequest* const request = requests.Latest();
    if (!pdu) {
        Add(CauseKind::BadAnswer, now,
            "an answer of " + std::to_string(apdu.size()) + " octets cannot be read");
    } else if (!request || pdu->kind == AnswerPdu::Kind::SegmentAck) {
        return;
    } else if (pdu->invokeId != request->invokeId) {
        Stray(handle, *pdu, now);
    } else if (request->isAnswered && !(pdu->isSegmented && !segments.IsEmpty())) {
        AddFor(CauseKind::Duplicate, request->object, now, "an answer comes twice");
    } else if (!isTaken && expected == Expected::Nothing && segments.IsEmpty()) {
        Late(*request, now);
    } else {
        silentSince = 0;
        isAnsweredSince = true;
        Answer(*request, *pdu, apdu, now);
    }
}

void BlockObserver::Stray(int handle, AnswerPdu const& pdu, Moment const& now) {
    SeenRequest* const earlier = requests.FindEarlier(pdu.invokeId);
    if (!earlier) {
        Add(CauseKind::OtherInvokeId, now,
            "an answer has invoke id " + std::to_string(pdu.invokeId) + " in place of " +
                std::to_string(requests.Latest()->invokeId));
    } else if (earlier->isAnswered) {
        AddFor(CauseKind::Duplicate, earlier->object, now, "an answer comes twice");
    } else if (earlier->handle == handle && now.steady - earlier->steady > Timeout) {
        Late(*earlier, now);
    } else {
        earlier->isAnswered = true;
        AddFor(CauseKind::EarlierAnswer, requests.Latest()->object, now,
               "the device answers the request before (invoke id " + std::to_string(pdu.invokeId) + ")");
    }
}

void BlockObserver::Late(SeenRequest& request, Moment const& now) {
    request.isAnswered = true;
    ++lateCount;
    Delay const late{std::max(now.earliest - request.steady, Timeout), now.steady - request.steady};
    bool const isBetter = late.IsExact() == delay.IsExact() ? late.most > delay.most : late.IsExact();
    if (lateCount == 1 || isBetter) {
        delay = late;
    }
}

void BlockObserver::Answer(SeenRequest& request, AnswerPdu const& pdu, Octets const& apdu,
                           Moment const& now) {
    if (apdu.size() > request.maxApduLength) {
        AddFor(CauseKind::LongAnswer, request.object, now,
               "an answer has " + std::to_string(apdu.size()) + " octets, " +
                   std::to_string(request.maxApduLength) + " were negotiated");
    }
    if (pdu.isSegmented) {
        Segment(request, pdu, apdu, now);
        return;
    }
    expected = Expected::Nothing;
    request.isAnswered = true;
    if (request.IsWrite()) {
        WriteAnswered(request, pdu);
    } else if (pdu.failure) {
        ReadFailed(request, *pdu.failure, now);
    } else if (pdu.kind != AnswerPdu::Kind::ComplexAck || pdu.serviceChoice != request.serviceChoice) {
        AddFor(CauseKind::BadAnswer, request.object, now, "the answer is not one to the request");
    } else {
        ReadAnswer(request, apdu, pdu.contentAt, now);
    }
}

void BlockObserver::AddCause(CauseKind kind, VariableConfig const* variable, std::string const& text,
                             Moment const& now) {
    std::string const object =
        variable ? variable->objectType->name + (" " + std::to_string(variable->objectNumber)) : "";
    causes.Add(kind, object, (object.empty() ? "" : object + ": ") + text, now.wall);
}

void BlockObserver::Add(CauseKind kind, Moment const& now, std::string const& text) {
    causes.Add(kind, "", text, now.wall);
}

void BlockObserver::AddFor(CauseKind kind, ObjectId const& object, Moment const& now,
                           std::string const& text) {
    std::string const name = standard::ObjectText(object);
    causes.Add(kind, name, name + ": " + text, now.wall);
}

std::vector<HeldWrite> BlockObserver::HeldWrites() const {
    std::vector<HeldWrite> writes;
    for (auto const& write : held) {
        writes.push_back(write.second);
    }
    return writes;
}

}  // namespace workbench
