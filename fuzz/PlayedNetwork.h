#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

#include "Input.h"
#include "ModelDevice.h"
#include "Require.h"
#include "dorvelshare/HostEnvironment.h"

namespace fuzz {

// An APDU that the client sent, decoded.
struct SentApdu {
    enum Kind { Read, Write, SegmentAck } kind = Read;
    unsigned invokeId = 0;
    unsigned sequenceNumber = 0;  // of a SegmentAck
    unsigned objectType = 0;      // of a read and a write
    std::vector<unsigned> properties;
    Octets octets;
};

inline unsigned At(Octets const& octets, std::size_t index) {
    Require(index < octets.size(), "a datagram holds all of its parts");
    return static_cast<unsigned char>(octets[index]);
}

// The network of a device client in virtual time. What the client sends must be well-formed. What arrives
// comes from the input, one delivery each time that the client waits. A delivery is an honest answer to the
// request, a changed one, or noise: honest answers let an input get past the invoke id. After the end of the
// input nothing arrives. After BeHonest the device answers every request properly.
class PlayedNetwork final : public dorvel::HostEnvironment {
public:
    static constexpr long long Start = 133485408000000000;  // 1 January 2024 as a file time

    PlayedNetwork(Input& played, bool isRouted) : input(played), routed(isRouted) {
        dorvel::SetEnvironment(this);
    }
    ~PlayedNetwork() override { dorvel::SetEnvironment(nullptr); }
    PlayedNetwork(PlayedNetwork const&) = delete;
    PlayedNetwork& operator=(PlayedNetwork const&) = delete;

    // Drops what has not arrived yet.
    void BeHonest() {
        honest = true;
        arriving.clear();
    }

    int OpenSockets() const { return openSockets; }
    // How often the client has waited without receiving, and in all.
    int EmptyWaits() const { return emptyWaits; }
    int Waits() const { return waits; }
    int Sent() const { return sentCount; }
    SentApdu const& LastRequest() const { return request; }

    int Open(unsigned short port) override {
        ++openSockets;
        localPort = port;
        return 3;
    }
    unsigned short LocalPort(int) override { return localPort; }
    void Close(int) override { --openSockets; }

    bool Send(int, sockaddr_in const&, void const* data, int length) override {
        auto const* const first = static_cast<char const*>(data);
        ++sentCount;
        SentApdu sent = Decode(Octets(first, first + length));
        if (sent.kind == SentApdu::SegmentAck) {
            Require(sent.invokeId == request.invokeId, "a segment is acknowledged with the request's id");
        } else {
            previous = std::exchange(request, std::move(sent));
            segmentStart = 0;
            segmentNumber = 0;
        }
        if (honest) {
            arriving.push_back({elapsed, Datagram(HonestApdu(request))});
        }
        return true;
    }

    int Receive(int, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        ++waits;
        if (!honest && !input.IsEmpty()) {
            PlayDelivery();
        }
        sender = sockaddr_in();
        if (arriving.empty() || arriving.front().first > elapsed + timeout) {
            ++emptyWaits;
            elapsed += timeout;
            return -1;
        }
        elapsed = std::max(elapsed, arriving.front().first);
        Octets const datagram = std::move(arriving.front().second);
        arriving.pop_front();
        std::size_t const count = std::min(datagram.size(), static_cast<std::size_t>(size));
        std::copy_n(datagram.begin(), count, static_cast<char*>(buffer));
        return static_cast<int>(count);
    }

    long long Now() override { return Start + elapsed * 10000; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }

private:
    // BVLC, NPDU and the header of the APDU, as docs/wire-format.md documents them.
    SentApdu Decode(Octets const& datagram) const {
        Require(At(datagram, 0) == 0x81 && At(datagram, 1) == 0x0A, "a unicast BACnet/IP frame is sent");
        Require(At(datagram, 3) == datagram.size() % 256, "the low octet of the length is right");
        Require(At(datagram, 2) == (datagram.size() >> 4 & 0xF0),
                "the high octet of the length is in the driver's form");
        Require(At(datagram, 4) == 1, "the version is 1");
        Require(At(datagram, 5) == (routed ? 0x24u : 0x04u), "an answer is expected");
        std::size_t const apdu = routed ? 6 + 3 + At(datagram, 8) + 1 : 6;
        Require(apdu < datagram.size(), "an APDU is sent");
        return DecodeApdu(Octets(datagram.begin() + static_cast<std::ptrdiff_t>(apdu), datagram.end()));
    }

    static SentApdu DecodeApdu(Octets apdu) {
        SentApdu sent;
        if (At(apdu, 0) == 0x40) {
            Require(apdu.size() == 4 && At(apdu, 3) == 1, "a SegmentAck has four octets and window 1");
            sent.kind = SentApdu::SegmentAck;
            sent.invokeId = At(apdu, 1);
            sent.sequenceNumber = At(apdu, 2);
            return sent;
        }
        sent.invokeId = At(apdu, 2);
        Require(At(apdu, 4) == 0x0C, "the object comes first");
        sent.objectType = At(apdu, 5) << 2 | At(apdu, 6) >> 6;
        Require((At(apdu, 7) << 8 | At(apdu, 8)) == ModelInstance, "the object is one of the block");
        bool const isRead = At(apdu, 3) == 0x0E;
        Require(isRead || At(apdu, 3) == 0x0F, "the service is ReadPropertyMultiple or WriteProperty");
        Require(At(apdu, 0) == (isRead ? 2u : 0u), "the flags are those of the service");
        sent.kind = isRead ? SentApdu::Read : SentApdu::Write;
        std::size_t position = isRead ? 10 : 9;
        do {
            unsigned const head = At(apdu, position);
            Require(head == (isRead ? 0x09u : 0x19u), "the list has properties of one octet");
            sent.properties.push_back(At(apdu, position + 1));
            position += 2;
        } while (isRead && At(apdu, position) != 0x1F);
        Require(isRead ? position + 1 == apdu.size() : At(apdu, position) == 0x3E, "the list is closed");
        sent.octets = std::move(apdu);
        return sent;
    }

    // Everything that a device can send, by bits 0 to 3 of the control octet. Bits 4 and 5 are the number of
    // changed octets, bit 6 cuts the datagram and corrects its length, bit 7 delays it.
    void PlayDelivery() {
        unsigned const control = input.Octet();
        unsigned const kind = control & 0x0F;
        if (kind == 0) {
            return;
        }
        Octets datagram = kind == 1 ? input.Octets(input.Octet()) : Datagram(Apdu(kind));
        for (unsigned change = control >> 4 & 3; change > 0 && !datagram.empty(); --change) {
            unsigned const index = input.Octet();
            datagram[index % datagram.size()] = static_cast<char>(input.Octet());
        }
        if ((control & 0x40) != 0) {
            datagram.resize(std::min<std::size_t>(datagram.size(), input.Octet()));
            CorrectLength(datagram);
        }
        long long const delay = (control & 0x80) != 0 ? input.Octet() * 16 : 0;
        arriving.push_back({elapsed + delay, std::move(datagram)});
    }

    static void CorrectLength(Octets& datagram) {
        if (datagram.size() >= 4) {
            datagram[2] = static_cast<char>(datagram.size() >> 8);
            datagram[3] = static_cast<char>(datagram.size());
        }
    }

    Octets Datagram(Octets const& apdu) const {
        static Octets const heads[] = {test::Hex("81 0A 00 00 01 00"),
                                       test::Hex("81 0A 00 00 01 08 00 05 06 C0 A8 0A 07 BA C0")};
        Octets datagram = heads[routed ? 1 : 0];
        datagram.insert(datagram.end(), apdu.begin(), apdu.end());
        CorrectLength(datagram);
        return datagram;
    }

    Octets Apdu(unsigned kind) {
        using test::operator+;
        auto const id = static_cast<char>(request.invokeId);
        char const service = request.kind == SentApdu::Write ? 0x0F : 0x0E;
        switch (kind) {
            case 2:
                return HonestApdu(request);
            case 3:
                return HonestApdu(previous);
            case 4:
                return Segment(input.Octet());
            case 5:
                return input.Octets(input.Octet());
            case 6:
                return Octets{0x30, id, service} + input.Octets(input.Octet());
            case 7:
                return OtherValue(input.Octet());
            case 8:
                return Octets{0x50, id, service} + input.Octets(input.Below(32));
            case 9:
                return Octets{0x60, id} + input.Octets(1);
            case 10:
                return Octets{0x71, id} + input.Octets(1);
            case 11:
                return Octets{0x20, id, service};
            case 12:
                return HonestApdu(request) + Octets(input.Octet() * 8, static_cast<char>(input.Octet()));
            case 13:
                return ReadAck(input.Octet(), 0x5E, {'\x91', 2, '\x91', 0x20});
            case 14:
                return LooseSegment(input.Octet(), input.Octet());
            default:
                return Octets{input.IsEmpty() ? '\0' : static_cast<char>(input.Octet()), id} +
                       input.Octets(input.Octet());
        }
    }

    Octets OtherValue(unsigned which) { return ReadAck(which, 0x4E, input.Octets(input.Octet())); }

    Octets HonestApdu(SentApdu const& asked) const {
        if (asked.kind == SentApdu::Write) {
            return {0x20, static_cast<char>(asked.invokeId), 0x0F};
        }
        using test::operator+;
        return Octets{0x30, static_cast<char>(asked.invokeId), 0x0E} + Payload(asked);
    }

    // The service part of an ack. The property with the index other, if there is one, has the given tags; the
    // opening tag makes them a value or an error.
    static Octets Payload(SentApdu const& asked, std::size_t other = -1, char opening = 0x4E,
                          Octets const& tags = {}) {
        Octets const object = ObjectOctets(asked.objectType);
        Octets payload{0x0C, object[0], object[1], object[2], object[3], 0x1E};
        for (std::size_t i = 0; i < asked.properties.size(); ++i) {
            unsigned const property = asked.properties[i];
            bool const isOther = i == other;
            AppendResult(payload, property, isOther ? opening : 0x4E,
                         isOther ? tags : ModelTags(asked.objectType, property),
                         static_cast<char>((isOther ? opening : 0x4E) + 1));
        }
        payload.push_back(0x1F);
        return payload;
    }

    Octets ReadAck(unsigned which, char opening, Octets const& tags) const {
        std::size_t const other = request.properties.empty() ? 0 : which % request.properties.size();
        using test::operator+;
        return Octets{0x30, static_cast<char>(request.invokeId), 0x0E} +
               Payload(request, other, opening, tags);
    }

    // The next segment of the honest answer. Bits 0 to 5 are its length less one; bit 6 marks it as the last
    // one and bit 7 as not the last one, whether that is true or not.
    Octets Segment(unsigned form) {
        Octets const whole = Payload(request);
        std::size_t const length = std::min<std::size_t>(1 + (form & 0x3F), whole.size() - segmentStart);
        auto const first = whole.begin() + static_cast<std::ptrdiff_t>(segmentStart);
        segmentStart += length;
        bool const more = (form & 0x80) != 0 || (segmentStart < whole.size() && (form & 0x40) == 0);
        using test::operator+;
        return Octets{static_cast<char>(more ? 0x3C : 0x38), static_cast<char>(request.invokeId),
                      static_cast<char>(segmentNumber++), 1, 0x0E} +
               Octets(first, first + static_cast<std::ptrdiff_t>(length));
    }

    // A segment whose number and flags come from the input.
    Octets LooseSegment(unsigned flags, unsigned number) {
        using test::operator+;
        return Octets{static_cast<char>(0x30 | (flags & 0x0F)), static_cast<char>(request.invokeId),
                      static_cast<char>(number), 1, 0x0E} +
               input.Octets(flags >> 4);
    }

    Input& input;
    bool const routed;
    bool honest = false;
    std::deque<std::pair<long long, Octets>> arriving;  // with the time of arrival
    SentApdu request;
    SentApdu previous;
    std::size_t segmentStart = 0;
    unsigned segmentNumber = 0;
    unsigned short localPort = 0;
    int openSockets = 0;
    int waits = 0;
    int emptyWaits = 0;
    int sentCount = 0;
    long long elapsed = 0;
};

}  // namespace fuzz
