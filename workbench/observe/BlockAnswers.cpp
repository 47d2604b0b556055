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

}  // namespace

void BlockObserver::Segment(SeenRequest& request, AnswerPdu const& pdu, Octets const& apdu,
                            Moment const& now) {
    std::string const number = "segment " + std::to_string(pdu.sequenceNumber);
    switch (segments.Add(pdu, apdu)) {
        case SegmentCollector::Arrival::Repeated:
            AddFor(CauseKind::RepeatedSegment, request.object, now, number + " of the answer comes twice");
            break;
        case SegmentCollector::Arrival::OutOfOrder:
            AddFor(CauseKind::SegmentOrder, request.object, now, number + " of the answer comes too late");
            break;
        case SegmentCollector::Arrival::WithoutEnd:
            AddFor(CauseKind::EndlessSegments, request.object, now,
                   "an answer of more than " + std::to_string(SegmentCollector::Most) + " segments");
            if (segments.Count() == SegmentCollector::Most + 1) {
                // The cycle lasts as long as the segments come, so its end would be too late to say so.
                logMsgLn("The device sends segments without end; the cycle cannot end before they do");
            }
            break;
        default:
            break;
    }
    expected = segments.HasEnd() ? Expected::Nothing : Expected::Segment;
    request.isAnswered = request.isAnswered || !pdu.moreFollows;
    if (pdu.moreFollows || segments.Count() > SegmentCollector::Most) {
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
               standard::FailureText(failure));
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

void BlockObserver::WriteAnswered(SeenRequest const& request, AnswerPdu const& pdu) {
    if (!written) {
        return;
    }
    PointWrite& write = points.WriteOf(*written);
    if (pdu.failure) {
        write.failure = standard::FailureText(*pdu.failure);
        write.isAborted = pdu.kind == AnswerPdu::Kind::Abort;
    } else if (pdu.kind == AnswerPdu::Kind::SimpleAck) {
        write.isAcknowledged = true;
        Hold(request, *written);
    }
}

void BlockObserver::Hold(SeenRequest const& request, VariableConfig const& variable) {
    standard::PropertyReference const& reference = request.write->reference;
    bool const mayBeCommandable =
        reference.property == PresentValue && std::find(std::begin(Commandable), std::end(Commandable),
                                                        reference.object.type) != std::end(Commandable);
    if (!mayBeCommandable) {
        return;
    }
    std::uint32_t const priority = request.write->priority.value_or(DefaultPriority);
    held[{reference.object.Encoded(), reference.property, priority}] = {
        FullName(block, variable), standard::ReferenceText(reference),
        standard::DatumText(request.write->values, reference), priority, !request.write->priority};
}

}  // namespace workbench
