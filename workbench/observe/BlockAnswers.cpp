// What a BlockObserver reads from the content of answers.

#include <algorithm>
#include <iterator>

#include "BlockObserver.h"
#include "DatumText.h"
#include "ErrorNames.h"
#include "ObjectNames.h"
#include "PropertyNames.h"
#include "SetRequest.h"
#include "dorvelshare/Trace.h"

namespace workbench {

using standard::AnswerPdu;
using standard::Failure;
using standard::Octets;

namespace {

constexpr std::uint32_t PresentValue = 85;
constexpr std::uint32_t StatusFlags = 111;
constexpr std::uint32_t DefaultPriority = 16;

// Object types whose present value may have a priority array: outputs and values (clause 19.2). An output
// always has one.
constexpr std::uint16_t Commandable[] = {1,  2,  4,  5,  14, 19, 39, 40, 41, 42,
                                         43, 44, 45, 46, 47, 48, 49, 50, 54};

bool Contains(std::vector<std::uint32_t> const& properties, std::uint32_t property) {
    return std::find(properties.begin(), properties.end(), property) != properties.end();
}

bool MayBeCommandable(standard::PropertyReference const& reference) {
    return reference.property == PresentValue && std::find(std::begin(Commandable), std::end(Commandable),
                                                           reference.object.type) != std::end(Commandable);
}

WriteTarget TargetOf(SeenRequest const& write) {
    standard::PropertyReference const& reference = write.write->reference;
    return {write.peer, write.destination, reference.object, reference.property,
            write.write->priority.value_or(DefaultPriority)};
}

// The driver reads with no other service.
constexpr std::uint32_t UnrecognizedService = 9;

std::string NeedOf(SeenRequest const& request, Failure const& failure) {
    bool const isUnknown = failure.kind == Failure::Kind::Reject && failure.code == UnrecognizedService;
    return isUnknown && !request.IsWrite()
               ? "; it does not support ReadPropertyMultiple, which the driver needs"
               : "";
}

}  // namespace

void BlockObserver::Segment(SeenRequest& request, AnswerPdu const& pdu, Octets const& apdu,
                            Moment const& now) {
    std::string const number = "segment " + std::to_string(pdu.sequenceNumber);
    switch (segments.Add(pdu, apdu)) {
        case AnswerSegments::Arrival::Repeated:
            AddFor(CauseKind::RepeatedSegment, request.object, now, number + " of the answer comes twice");
            break;
        case AnswerSegments::Arrival::OutOfOrder:
            AddFor(CauseKind::SegmentOrder, request.object, now, number + " of the answer comes too late");
            break;
        case AnswerSegments::Arrival::WithoutEnd:
            AddFor(CauseKind::EndlessSegments, request.object, now,
                   "an answer of more than " + std::to_string(AnswerSegments::Most) + " segments");
            if (segments.Count() == AnswerSegments::Most + 1) {
                // The cycle lasts as long as the segments come, so its end would be too late to say so.
                logMsgLn("The device sends segments without end; the cycle cannot end before they do");
            }
            break;
        default:
            break;
    }
    expected = segments.HasEnd() ? Expected::Nothing : Expected::Segment;
    request.isAnswered = request.isAnswered || !pdu.moreFollows;
    if (pdu.moreFollows || segments.Count() > AnswerSegments::Most) {
        return;
    }
    if (std::optional<unsigned> const missing = segments.Missing()) {
        AddFor(CauseKind::MissingSegment, request.object, now,
               "segment " + std::to_string(*missing) + " of the answer is missing");
    } else {
        ReadAnswer(request, segments.Content(), 0, now);
    }
}

void BlockObserver::ReadFailed(SeenRequest const& request, Failure const& failure, Moment const& now) {
    CauseKind const kind = failure.kind == Failure::Kind::Reject  ? CauseKind::Reject
                           : failure.kind == Failure::Kind::Abort ? CauseKind::Abort
                           : failure.kind == Failure::Kind::Error ? CauseKind::Error
                                                                  : CauseKind::BadAnswer;
    AddFor(kind, request.object, now,
           (kind == CauseKind::Error ? "the device answers with error " : "the device answers with ") +
               standard::FailureText(failure) + NeedOf(request, failure));
}

void BlockObserver::ReadAnswer(SeenRequest& request, Octets const& apdu, std::size_t at, Moment const& now) {
    auto results = standard::parameters::OfReadPropertyMultipleAck(apdu, at);
    if (!results) {
        AddFor(CauseKind::BadAnswer, request.object, now, "the content of the answer cannot be read");
        return;
    }
    for (standard::ReadResult const& result : *results) {
        CheckResult(request, result, now);
    }
    CheckMissing(request, *results, now);
    points.Keep(*std::move(results));
}

void BlockObserver::CheckResult(SeenRequest const& request, standard::ReadResult const& result,
                                Moment const& now) {
    standard::PropertyReference const& reference = result.reference;
    if (!(reference.object == request.object)) {
        AddFor(CauseKind::OtherObject, request.object, now,
               "the device answers for " + standard::ObjectText(reference.object));
    } else if (!Contains(request.properties, reference.property)) {
        AddFor(CauseKind::UnaskedProperty, request.object, now,
               "the device also answers " + standard::PropertyText(reference.property) +
                   ", which was not requested");
    } else if (result.failure && Matters(reference)) {
        AddFor(CauseKind::PropertyError, request.object, now,
               standard::PropertyText(reference.property) + ": " + standard::FailureText(*result.failure));
    }
}

// The driver always requests Status_Flags, which some object types do not have. They decide the quality of
// the present value.
bool BlockObserver::Matters(standard::PropertyReference const& reference) const {
    return reference.property != StatusFlags || points.Has(reference.object, StatusFlags) ||
           points.Has(reference.object, PresentValue);
}

void BlockObserver::CheckMissing(SeenRequest const& request, std::vector<standard::ReadResult> const& results,
                                 Moment const& now) {
    for (std::uint32_t const property : request.properties) {
        bool const isThere = std::any_of(results.begin(), results.end(), [=](auto const& result) {
            return result.reference.property == property;
        });
        if (!isThere && Matters({request.object, property, {}})) {
            AddFor(CauseKind::MissingProperty, request.object, now,
                   "the answer has nothing for " + standard::PropertyText(property));
        }
    }
}

void BlockObserver::NoteWrite(SeenRequest const& request) {
    points.WriteOf(*request.variable) = {
        request.write->values, false, {}, false, request.write->reference.property, request.number};
    if (MayBeCommandable(request.write->reference)) {
        held.Sent(TargetOf(request),
                  {FullName(block, *request.variable), standard::ReferenceText(request.write->reference),
                   standard::DatumText(request.write->values, request.write->reference),
                   !request.write->priority, request.number, request.steady, false});
    }
}

// Also for a late answer, and for one that comes in place of another.
void BlockObserver::WriteAnswered(SeenRequest const& request, AnswerPdu const& pdu) {
    if (!request.variable) {
        return;
    }
    PointWrite& write = points.WriteOf(*request.variable);
    bool const isLatest = write.number == request.number;
    if (pdu.failure) {
        held.Refused(TargetOf(request), request.number);
        write.failure = isLatest ? standard::FailureText(*pdu.failure) : write.failure;
        write.isAborted = isLatest ? pdu.kind == AnswerPdu::Kind::Abort : write.isAborted;
    } else if (pdu.kind == AnswerPdu::Kind::SimpleAck) {
        held.Acknowledged(TargetOf(request), request.number);
        write.isAcknowledged = write.isAcknowledged || isLatest;
    }
}

}  // namespace workbench
