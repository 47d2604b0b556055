#include "ApplicationLayer.h"

#include <algorithm>

#include "Answers.h"
#include "ConfirmedRequest.h"
#include "OctetReader.h"
#include "Service.h"
#include "UnconfirmedAnswers.h"

namespace simulator {

namespace {

enum PduType : std::uint8_t {
    ConfirmedRequestPdu = 0,
    UnconfirmedRequestPdu = 1,
    SegmentAckPdu = 4,
    AbortPdu = 7
};

constexpr std::uint8_t SentByServer = 0x01;
constexpr std::uint8_t LargestWindow = 127;
constexpr std::size_t MostTransactions = 32;

std::vector<Answer> Addressed(Peer const& peer, std::uint8_t priority, std::vector<Octets> apdus) {
    std::vector<Answer> answers;
    for (Octets& apdu : apdus) {
        answers.push_back({peer, priority, std::move(apdu)});
    }
    return answers;
}

}  // namespace

std::vector<Answer> ApplicationLayer::Receive(NetworkLayer::Indication const& indication, Moment const& now) {
    if (indication.apdu.empty()) {
        return {};
    }
    std::vector<Octets> apdus;
    switch (OctetReader(indication.apdu).Peek() >> 4) {
        case ConfirmedRequestPdu:
            apdus = ReceiveConfirmed(indication, now);
            break;
        case UnconfirmedRequestPdu:
            if (auto answer = AnswerUnconfirmed(indication.apdu, device)) {
                apdus.push_back(*answer);
            }
            break;
        case SegmentAckPdu:
            apdus = ReceiveSegmentAck(indication, now);
            break;
        case AbortPdu:
            ReceiveAbort(indication);
            break;
        default:
            break;  // answers: this device sends no requests
    }
    return Addressed(indication.peer, indication.priority, std::move(apdus));
}

std::vector<Answer> ApplicationLayer::Tick(Moment const& now) {
    std::vector<Answer> answers;
    for (Transaction& transaction : transactions) {
        for (Answer& answer :
             Addressed(transaction.peer, transaction.priority, transaction.answer.Tick(now))) {
            answers.push_back(std::move(answer));
        }
    }
    transactions.erase(std::remove_if(transactions.begin(), transactions.end(),
                                      [](Transaction const& t) { return t.answer.IsFinished(); }),
                       transactions.end());
    return answers;
}

// A confirmed request that was broadcast must not be answered (clause 5.4.5.1).
std::vector<Octets> ApplicationLayer::ReceiveConfirmed(NetworkLayer::Indication const& indication,
                                                       Moment const& now) {
    auto const request = ConfirmedRequest::Decode(indication.apdu);
    if (!request || indication.isBroadcast) {
        return {};
    }
    Forget(indication.peer, request->invokeId);
    try {
        return Serve(*request, indication, now);
    } catch (Reject const& reject) {
        return {answers::Reject(request->invokeId, reject.reason)};
    } catch (Abort const& abort) {
        return {answers::Abort(request->invokeId, abort.reason)};
    } catch (ServiceError const& error) {
        return {answers::Error(request->invokeId, request->serviceChoice, error)};
    }
}

std::vector<Octets> ApplicationLayer::Serve(ConfirmedRequest const& request,
                                            NetworkLayer::Indication const& indication, Moment const& now) {
    if (request.isSegmented) {
        throw Abort{AbortReason::SegmentationNotSupported};
    }
    if (indication.apdu.size() > device.Settings().maxApduLength) {
        throw Abort{AbortReason::ApduTooLong};
    }
    ConfirmedService const service = FindService(request.serviceChoice);
    if (!service) {
        throw Reject{RejectReason::UnrecognizedService};
    }
    TagReader parameters(indication.apdu, request.parametersAt);
    TagWriter ack;
    service(parameters, device, now, ack);
    if (ack.size() == 0) {
        return {answers::SimpleAck(request.invokeId, request.serviceChoice)};
    }
    Octets content = ack.Take();
    std::size_t longest = LongestApdu(request);
    if (onAck) {
        onAck(request.serviceChoice, content, longest);
    }
    if (answers::ComplexAckHead + content.size() <= longest) {
        return {answers::ComplexAck(request.invokeId, request.serviceChoice, content)};
    }
    return AnswerInSegments(request, indication, std::move(content), longest, now);
}

std::size_t ApplicationLayer::LongestApdu(ConfirmedRequest const& request) const {
    return std::min(request.maxApduLength, device.Settings().maxApduLength);
}

std::vector<Octets> ApplicationLayer::AnswerInSegments(ConfirmedRequest const& request,
                                                       NetworkLayer::Indication const& indication,
                                                       Octets content, std::size_t longest,
                                                       Moment const& now) {
    DeviceSettings const& settings = device.Settings();
    if (!request.acceptsSegments || !settings.segmentsAnswers) {
        throw Abort{AbortReason::SegmentationNotSupported};
    }
    std::size_t const segmentLength = longest - answers::SegmentHead;
    std::size_t const count = SegmentedAnswer::SegmentCount(content.size(), segmentLength);
    if ((request.maxSegments != 0 && count > request.maxSegments) ||
        (settings.maxSegments != 0 && count > settings.maxSegments)) {
        throw Abort{AbortReason::BufferOverflow};
    }
    if (transactions.size() == MostTransactions) {
        throw Abort{AbortReason::OutOfResources};
    }
    SegmentedAnswer::Parameters const parameters{request.invokeId,        request.serviceChoice,
                                                 segmentLength,           settings.proposedWindowSize,
                                                 settings.segmentTimeout, settings.retries};
    transactions.push_back(
        {indication.peer, indication.priority, SegmentedAnswer(parameters, std::move(content))});
    return transactions.back().answer.Start(now);
}

std::vector<Octets> ApplicationLayer::ReceiveSegmentAck(NetworkLayer::Indication const& indication,
                                                        Moment const& now) try {
    OctetReader reader(indication.apdu);
    bool const isFromServer = (reader.U8() & SentByServer) != 0;
    std::uint8_t const invokeId = reader.U8();
    std::uint8_t const sequenceNumber = reader.U8();
    std::uint8_t const windowSize = reader.U8();
    auto const transaction = Find(indication.peer, invokeId);
    if (isFromServer || transaction == transactions.end()) {
        return {};
    }
    if (windowSize == 0 || windowSize > LargestWindow) {
        transactions.erase(transaction);
        return {answers::Abort(invokeId, AbortReason::WindowSizeOutOfRange)};
    }
    std::vector<Octets> segments = transaction->answer.Acknowledge(sequenceNumber, windowSize, now);
    if (transaction->answer.IsFinished()) {
        transactions.erase(transaction);
    }
    return segments;
} catch (EndOfOctets const&) {
    return {};
}

void ApplicationLayer::ReceiveAbort(NetworkLayer::Indication const& indication) try {
    OctetReader reader(indication.apdu);
    if ((reader.U8() & SentByServer) == 0) {
        Forget(indication.peer, reader.U8());
    }
} catch (EndOfOctets const&) {
}

ApplicationLayer::Transactions::iterator ApplicationLayer::Find(Peer const& peer, std::uint8_t invokeId) {
    return std::find_if(transactions.begin(), transactions.end(), [&](Transaction const& transaction) {
        return transaction.peer == peer && transaction.answer.InvokeId() == invokeId;
    });
}

void ApplicationLayer::Forget(Peer const& peer, std::uint8_t invokeId) {
    auto const transaction = Find(peer, invokeId);
    if (transaction != transactions.end()) {
        transactions.erase(transaction);
    }
}

}  // namespace simulator
