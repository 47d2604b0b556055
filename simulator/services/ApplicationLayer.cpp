#include "ApplicationLayer.h"

#include <algorithm>

#include "Answers.h"
#include "ConfirmedRequest.h"
#include "OctetReader.h"
#include "Service.h"
#include "WhoIs.h"

namespace simulator {

namespace {

enum PduType : std::uint8_t { kConfirmedRequest = 0, kUnconfirmedRequest = 1, kSegmentAck = 4, kAbort = 7 };

constexpr std::uint8_t kSentByServer = 0x01;
constexpr std::uint8_t kLargestWindow = 127;
constexpr std::size_t kMostTransactions = 32;

std::vector<Answer> addressed(Peer const& peer, std::uint8_t priority, std::vector<Octets> apdus) {
    std::vector<Answer> answers;
    for (Octets& apdu : apdus) {
        answers.push_back({peer, priority, std::move(apdu)});
    }
    return answers;
}

}  // namespace

std::vector<Answer> ApplicationLayer::receive(NetworkLayer::Indication const& indication, Moment const& now) {
    if (indication.apdu.empty()) {
        return {};
    }
    std::vector<Octets> apdus;
    switch (OctetReader(indication.apdu).peek() >> 4) {
        case kConfirmedRequest:
            apdus = receiveConfirmed(indication, now);
            break;
        case kUnconfirmedRequest:
            if (auto answer = answerUnconfirmed(indication.apdu, m_device)) {
                apdus.push_back(*answer);
            }
            break;
        case kSegmentAck:
            apdus = receiveSegmentAck(indication, now);
            break;
        case kAbort:
            receiveAbort(indication);
            break;
        default:
            break;  // answers: this device asks nobody
    }
    return addressed(indication.peer, indication.priority, std::move(apdus));
}

std::vector<Answer> ApplicationLayer::tick(Moment const& now) {
    std::vector<Answer> answers;
    for (Transaction& transaction : m_transactions) {
        for (Answer& answer :
             addressed(transaction.peer, transaction.priority, transaction.answer.tick(now))) {
            answers.push_back(std::move(answer));
        }
    }
    m_transactions.erase(std::remove_if(m_transactions.begin(), m_transactions.end(),
                                        [](Transaction const& t) { return t.answer.isFinished(); }),
                         m_transactions.end());
    return answers;
}

// A confirmed request that was sent to everybody is nobody's to answer (clause 5.4.5.1).
std::vector<Octets> ApplicationLayer::receiveConfirmed(NetworkLayer::Indication const& indication,
                                                       Moment const& now) {
    auto const request = ConfirmedRequest::decode(indication.apdu);
    if (!request || indication.isBroadcast) {
        return {};
    }
    forget(indication.peer, request->invokeId);
    try {
        return serve(*request, indication, now);
    } catch (Reject const& reject) {
        return {answers::reject(request->invokeId, reject.reason)};
    } catch (Abort const& abort) {
        return {answers::abort(request->invokeId, abort.reason)};
    } catch (ServiceError const& error) {
        return {answers::error(request->invokeId, request->serviceChoice, error)};
    }
}

std::vector<Octets> ApplicationLayer::serve(ConfirmedRequest const& request,
                                            NetworkLayer::Indication const& indication, Moment const& now) {
    if (request.isSegmented) {
        throw Abort{AbortReason::SegmentationNotSupported};
    }
    if (indication.apdu.size() > m_device.settings().maxApduLength) {
        throw Abort{AbortReason::ApduTooLong};
    }
    ConfirmedService const service = confirmedService(request.serviceChoice);
    if (!service) {
        throw Reject{RejectReason::UnrecognizedService};
    }
    TagReader parameters(indication.apdu, request.parametersAt);
    TagWriter ack;
    service(parameters, m_device, now, ack);
    if (ack.size() == 0) {
        return {answers::simpleAck(request.invokeId, request.serviceChoice)};
    }
    Octets content = ack.take();
    std::size_t longest = longestApdu(request);
    if (m_onAck) {
        m_onAck(request.serviceChoice, content, longest);
    }
    if (answers::kComplexAckHead + content.size() <= longest) {
        return {answers::complexAck(request.invokeId, request.serviceChoice, content)};
    }
    return answerInSegments(request, indication, std::move(content), longest, now);
}

std::size_t ApplicationLayer::longestApdu(ConfirmedRequest const& request) const {
    return std::min(request.maxApduLength, m_device.settings().maxApduLength);
}

std::vector<Octets> ApplicationLayer::answerInSegments(ConfirmedRequest const& request,
                                                       NetworkLayer::Indication const& indication,
                                                       Octets content, std::size_t longest,
                                                       Moment const& now) {
    DeviceSettings const& settings = m_device.settings();
    if (!request.acceptsSegments || !settings.segmentsAnswers) {
        throw Abort{AbortReason::SegmentationNotSupported};
    }
    std::size_t const segmentLength = longest - answers::kSegmentHead;
    std::size_t const count = SegmentedAnswer::segmentCount(content.size(), segmentLength);
    if ((request.maxSegments != 0 && count > request.maxSegments) ||
        (settings.maxSegments != 0 && count > settings.maxSegments)) {
        throw Abort{AbortReason::BufferOverflow};
    }
    if (m_transactions.size() == kMostTransactions) {
        throw Abort{AbortReason::OutOfResources};
    }
    SegmentedAnswer::Parameters const parameters{request.invokeId,        request.serviceChoice,
                                                 segmentLength,           settings.proposedWindowSize,
                                                 settings.segmentTimeout, settings.retries};
    m_transactions.push_back(
        {indication.peer, indication.priority, SegmentedAnswer(parameters, std::move(content))});
    return m_transactions.back().answer.start(now);
}

std::vector<Octets> ApplicationLayer::receiveSegmentAck(NetworkLayer::Indication const& indication,
                                                        Moment const& now) try {
    OctetReader reader(indication.apdu);
    bool const isFromServer = (reader.u8() & kSentByServer) != 0;
    std::uint8_t const invokeId = reader.u8();
    std::uint8_t const sequenceNumber = reader.u8();
    std::uint8_t const windowSize = reader.u8();
    auto const transaction = find(indication.peer, invokeId);
    if (isFromServer || transaction == m_transactions.end()) {
        return {};
    }
    if (windowSize == 0 || windowSize > kLargestWindow) {
        m_transactions.erase(transaction);
        return {answers::abort(invokeId, AbortReason::WindowSizeOutOfRange)};
    }
    std::vector<Octets> segments = transaction->answer.acknowledge(sequenceNumber, windowSize, now);
    if (transaction->answer.isFinished()) {
        m_transactions.erase(transaction);
    }
    return segments;
} catch (EndOfOctets const&) {
    return {};
}

void ApplicationLayer::receiveAbort(NetworkLayer::Indication const& indication) try {
    OctetReader reader(indication.apdu);
    if ((reader.u8() & kSentByServer) == 0) {
        forget(indication.peer, reader.u8());
    }
} catch (EndOfOctets const&) {
}

ApplicationLayer::Transactions::iterator ApplicationLayer::find(Peer const& peer, std::uint8_t invokeId) {
    return std::find_if(m_transactions.begin(), m_transactions.end(), [&](Transaction const& transaction) {
        return transaction.peer == peer && transaction.answer.invokeId() == invokeId;
    });
}

void ApplicationLayer::forget(Peer const& peer, std::uint8_t invokeId) {
    auto const transaction = find(peer, invokeId);
    if (transaction != m_transactions.end()) {
        m_transactions.erase(transaction);
    }
}

}  // namespace simulator
