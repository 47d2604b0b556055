// One read transaction: its attempts, and the collection of a segmented answer.

#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <typeinfo>
#include <utility>

#include "AbortResponseException.h"
#include "ErrorResponseException.h"
#include "Exceptions.h"
#include "FormRequest.h"
#include "Octets.h"
#include "ParseApdu.h"
#include "RejectResponseException.h"
#include "SupportInformation.h"
#include "TBACnet.h"
#include "UserTrace.h"

namespace dorvel::BACnet {

namespace {

// The sequence number in a Segment-ACK (ASHRAE 135 clause 20.1.6): its third octet.
constexpr std::size_t SequenceNumberOctet = 2;

// Segments by sequence number, an unsigned octet, so there are never more than 256.
using Segments = std::map<unsigned char, std::unique_ptr<ComplexAck>>;

std::string LogLine(ObjectIdentifier object, std::exception const& failure) {
    return std::to_string(static_cast<int>(object.GetObjectType())) + "-" +
           std::to_string(object.GetInstanceNumber()) + " " + failure.what() + "\n";
}

// Logs a failed attempt. It is called in exception handlers, so it logs nothing if there is no memory for the
// line.
void LogFailure(ObjectIdentifier object, std::exception const& failure) noexcept {
    try {
        logMsg(LogLine(object, failure).c_str());
    } catch (std::exception const&) {
    }
}

// The same if the user's trace is on; otherwise the line is not built.
void TraceFailure(ObjectIdentifier object, std::exception const& failure) noexcept {
    if (IsEnableUserTrace()) {
        LogFailure(object, failure);
    }
}

// The same for an attempt without an answer. An exception object is made for its text only: throwing it would
// cost a dozen times as much as the attempt.
void TraceSilence(ObjectIdentifier object) {
    if (IsEnableUserTrace()) {
        LogFailure(object, WrongLengthException());
    }
}

// The keys are distinct, so they count from 0 without a gap exactly if the last one is their number less one.
bool IsComplete(Segments const& segments) {
    return segments.rbegin()->first == segments.size() - 1;
}

// The whole ack: the header of segment 0 without its segmentation, and all payloads in order.
std::vector<char> Join(Segments& segments) {
    ComplexAck& head = *segments.begin()->second;
    head.SetSegmentedMessage(false);
    head.SetMoreFollows(false);
    std::vector<char> octets = head.GetBytes();
    // A device fills all segments but the last one.
    octets.reserve(segments.size() * octets.size());
    for (auto segment = std::next(segments.begin()); segment != segments.end(); ++segment) {
        AppendOctets(octets, segment->second->GetRawPayload());
    }
    return octets;
}

}  // namespace

int TBACnet::ProcessTagM(ObjectIdentifier object, std::vector<tagReadData*> const& objectTags,
                         std::vector<WriteDataRec>& values) {
    for (int attempt = 0; attempt < settings->repeatCount; ++attempt) {
        switch (TryRead(object, objectTags, values)) {
            case Attempt::Answered:
                return 1;
            case Attempt::Failed:
                return 0;
            case Attempt::Repeat:
                break;
        }
    }
    return 0;
}

// The response exceptions of ProcessResponseM, and a property without a row in the support table, end the
// transaction, since a repeat would give the same. Every other exception leads to the next attempt:
// std::runtime_error for a malformed or missing answer, std::bad_cast for a PDU that is not a ComplexAck. An
// Error, a Reject or an Abort is such a PDU (RequestAck), so it does not reach the first three handlers.
TBACnet::Attempt TBACnet::TryRead(ObjectIdentifier object, std::vector<tagReadData*> const& objectTags,
                                  std::vector<WriteDataRec>& values) {
    try {
        return ReadOnce(object, objectTags, values);
    } catch (ErrorResponseException const& refusal) {
        Trace(refusal.what());
        return Attempt::Answered;
    } catch (RejectResponseException const& refusal) {
        TraceFailure(object, refusal);
        return Attempt::Answered;
    } catch (AbortResponseException const& refusal) {
        TraceFailure(object, refusal);
        return Attempt::Answered;
    } catch (SupportInformationException const& refusal) {
        TraceFailure(object, refusal);
        return Attempt::Answered;
    } catch (std::runtime_error const& failure) {
        TraceFailure(object, failure);
    } catch (std::exception const& failure) {
        LogFailure(object, failure);
    } catch (...) {
        logMsg("Unknown error\n");
    }
    return Attempt::Repeat;
}

TBACnet::Attempt TBACnet::ReadOnce(ObjectIdentifier object, std::vector<tagReadData*> const& objectTags,
                                   std::vector<WriteDataRec>& values) {
    auto const request =
        FormRequest(settings->ReadInvokeId, objectTags, settings->linkAddress, settings->remoteAddress);
    std::unique_ptr<ComplexAck> ack = RequestAck(request);
    if (!ack) {
        TraceSilence(object);
        return Attempt::Repeat;
    }
    if (!ack->GetSegmentedMessage()) {
        bool const processed =
            ProcessResponseM(object, settings->ReadInvokeId, *ack, objectTags, values) != 0;
        return processed ? Attempt::Answered : Attempt::Repeat;
    }
    std::unique_ptr<PDU> const whole = CollectSegments(std::move(ack));
    bool const processed =
        whole && ProcessResponseM(object, settings->ReadInvokeId, *whole, objectTags, values) != 0;
    return processed ? Attempt::Answered : Attempt::Failed;
}

std::unique_ptr<ComplexAck> TBACnet::RequestAck(Network::NDataUnitRequest const& request) {
    std::vector<char> apdu;
    SendAndReceive(request, apdu);
    if (apdu.empty()) {
        return nullptr;
    }
    std::unique_ptr<PDU> pdu = ParseApdu(std::move(apdu));
    // An Error, a Reject or an Abort leaves here as std::bad_cast.
    auto& ack = dynamic_cast<ComplexAck&>(*pdu);
    pdu.release();
    return std::unique_ptr<ComplexAck>(&ack);
}

std::unique_ptr<PDU> TBACnet::CollectSegments(std::unique_ptr<ComplexAck> first) {
    Network::NDataUnitRequest acknowledgement = SegmentAck(first->GetSequenceNumber());
    char& sequenceNumber = acknowledgement.data.at(SequenceNumberOctet);
    Segments segments;
    // The first segment counts as number 0, whatever its sequence number is.
    segments[0] = std::move(first);
    bool moreFollows = true;
    while (moreFollows) {
        std::unique_ptr<ComplexAck> segment = RequestAck(acknowledgement);
        if (!segment) {
            throw WrongLengthException();
        }
        sequenceNumber = segment->GetSequenceNumber();
        moreFollows = segment->GetMoreFollows();
        segments[static_cast<unsigned char>(sequenceNumber)] = std::move(segment);
    }
    // A device sends nothing after the last acknowledgement, so this waits for the whole time-out. A datagram
    // that arrives is dropped.
    std::vector<char> ignored;
    SendAndReceive(acknowledgement, ignored);
    if (!IsComplete(segments)) {
        logMsg("Error: not all segments recieved");
        return nullptr;
    }
    return ParseApdu(Join(segments));
}

Network::NDataUnitRequest TBACnet::SegmentAck(char sequenceNumber) {
    return FormSegmentAckRequest(settings->ReadInvokeId, sequenceNumber, settings->linkAddress,
                                 settings->remoteAddress);
}

}  // namespace dorvel::BACnet
