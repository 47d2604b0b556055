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
    ++cycle;
    unanswered = lateCount = 0;
    delay = {};
    isAnsweredSince = false;
}

std::vector<Cause> BlockObserver::EndCycle(Moment const& now) {
    if (lateCount > 0) {
        AddLate(now);
    }
    if (unanswered > 0) {
        AddSilence(now);
    }
    return causes.Finish();
}

void BlockObserver::AddLate(Moment const& now) {
    causes.AddCounted({CauseKind::Late, "",
                       "answers come " + DelayText(delay) + " after the request, later than " +
                           DurationText(Timeout) + "; dropped: " + std::to_string(lateCount),
                       lateCount, now.wall});
}

void BlockObserver::AddSilence(Moment const& now) {
    // While answers come late, that of a young request may still come.
    RequestLog::Open const open =
        lateCount > 0 ? requests.OpenSince(cycle, now.steady - delay.most) : RequestLog::Open();
    unsigned long long const count = unanswered - std::min(unanswered, open.count);
    if (count == 0) {
        return;
    }
    ObjectId const object = open.count > 0 && open.latestOther ? open.latestOther->object : silentObject;
    std::string const requestsText =
        "in this cycle: " + std::to_string(count) + ", latest: " + standard::ObjectText(object);
    if (isAnsweredSince || open.count > 0) {
        causes.AddCounted(
            {CauseKind::Silent, "", "requests without an answer " + requestsText, count, now.wall});
    } else {
        causes.AddCounted(
            {CauseKind::Silent, "",
             "no answer since " + ClockTime(silentSince, now.localDiff) + ", requests " + requestsText, count,
             silentSince, true});
    }
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
    request->cycle = cycle;
    segments.Clear();
    expected = Expected::Answer;
    // The runtime announces each write, so the variable is known already.
    bool const isKnown = request->IsWrite() && Here().variable && Here().variable->write;
    if (!isKnown) {
        Enter(request->object);
    }
    request->variable = request->IsWrite() ? Here().variable : nullptr;
    SeenRequest const& added = requests.Add(*std::move(request));
    if (added.variable) {
        NoteWrite(added);
    }
}

void BlockObserver::ReceivedNothing(Moment const& now) {
    SeenRequest* const request = requests.Latest();
    if (!request || expected == Expected::Nothing) {
        return;
    }
    if (expected == Expected::Segment && segments.Count() <= AnswerSegments::Most) {
        AddFor(CauseKind::MissingSegment, request->object, now,
               "segment " + std::to_string(segments.Missing().value_or(0)) + " of the answer does not come");
    } else if (expected == Expected::Answer) {
        ++unanswered;
        request->isTimedOut = true;
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

void BlockObserver::CheckStation(standard::Endpoint const& sender, standard::Npdu const& npdu,
                                 Moment const& now) {
    SeenRequest const* const request = requests.Latest();
    if (!request || (sender == request->peer && npdu.source == request->destination)) {
        return;
    }
    std::optional<standard::NetworkAddress> const& asked = request->destination;
    bool const isAnyAsked = asked && asked->mac.empty();
    if (isAnyAsked && sender == request->peer && npdu.source && npdu.source->network == asked->network) {
        CheckAnyStation(sender, *npdu.source, now);
        return;
    }
    Add(CauseKind::OtherStation, now,
        StationText(sender.Text(), npdu.source) + " answers in place of " +
            StationText(request->peer.Text(), request->destination));
}

// An address without a MAC address is that of the only station on its network.
void BlockObserver::CheckAnyStation(standard::Endpoint const& sender, standard::NetworkAddress const& source,
                                    Moment const& now) {
    if (!station) {
        station = source;
    } else if (!(*station == source)) {
        Add(CauseKind::OtherStation, now,
            StationText(sender.Text(), source) + " answers too, besides " +
                StationText(sender.Text(), station) + "; the MAC of the block names neither");
    }
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
        Late(*request, *pdu, now);
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
        Late(*earlier, pdu, now);
    } else {
        earlier->isAnswered = true;
        if (earlier->IsWrite()) {
            WriteAnswered(*earlier, pdu);
        }
        AddFor(CauseKind::EarlierAnswer, requests.Latest()->object, now,
               "the device answers the request before (invoke id " + std::to_string(pdu.invokeId) + ")");
    }
}

void BlockObserver::Late(SeenRequest& request, AnswerPdu const& pdu, Moment const& now) {
    request.isAnswered = true;
    silentSince = 0;
    isAnsweredSince = true;
    unanswered -= request.isTimedOut && request.cycle == cycle ? 1 : 0;
    if (request.IsWrite()) {
        WriteAnswered(request, pdu);
    }
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

}  // namespace workbench
