// Segmented answers, complete and incomplete.

#include "DeviceFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

// The acknowledgement of a segment.
std::string SegmentAck(unsigned invokeId, unsigned sequenceNumber) {
    return "81 0A 00 0A 01 04 40 " + HexOctet(invokeId) + HexOctet(sequenceNumber) + "01";
}

class SegmentedAnswer : public DeviceFixture {
protected:
    SegmentedAnswer() {
        MakeDevice();
        AddVariable(code::AnalogInput, code::PresentValue, 1);
        payload =
            Hex(ReadResults(AnalogInput1, PropertyResult(85, Real42) + PropertyResult(111, FlagsFault)));
    }

    int Process() {
        return device->ProcessTagM(ObjectIdentifier(ObjectTypeEnum::Analog_Input, 1),
                                   TagsOf(ObjectTypeEnum::Analog_Input, 1), values);
    }

    // Octets of the payload from first to last.
    std::string Part(std::size_t first, std::size_t last) const {
        return ToHex(Octets(payload.begin() + static_cast<std::ptrdiff_t>(first),
                            payload.begin() + static_cast<std::ptrdiff_t>(std::min(last, payload.size()))));
    }
    std::string Rest(std::size_t first) const { return Part(first, payload.size()); }

    static Octets Segment(unsigned invokeId, unsigned sequenceNumber, bool moreFollows,
                          std::string const& part) {
        return AnswerDatagram(ReadAckSegment(invokeId, sequenceNumber, moreFollows, part));
    }

    // Expects the request of an attempt and answers with the first segment, which has 10 octets of the
    // payload.
    void BeginAttempt(unsigned invokeId) {
        network.Expect(ReadRequest(invokeId, AnalogInput1)).Answer(Segment(invokeId, 0, true, Part(0, 10)));
    }

    Octets payload;
};

TEST_F(SegmentedAnswer, IsCollectedAndAcknowledgedSegmentBySegment) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, true, Part(10, 13)), 5);
    network.Expect(SegmentAck(1, 1)).Answer(Segment(1, 2, false, Rest(13)), 5);
    network.Expect(SegmentAck(1, 2));
    EXPECT_EQ(Process(), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(AsDouble(values[0]), 42);
    EXPECT_EQ(network.Elapsed(), 10 + 1000) << "the last acknowledgement waits for its whole time";
}

TEST_F(SegmentedAnswer, AnswerToTheLastAcknowledgementIsIgnored) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1)).Answer(AnswerDatagram("50 01 0E 91 02 91 1F"), 3);
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(network.Elapsed(), 3);
}

TEST_F(SegmentedAnswer, BadFrameAfterTheLastAcknowledgementCostsTheAttempt) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1)).Answer("81 00 00 06 00 30");
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(SegmentedAnswer, FirstSegmentCountsAs0WhateverItsNumber) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(Segment(1, 9, true, Part(0, 10)));
    network.Expect(SegmentAck(1, 9)).Answer(Segment(1, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1));
    EXPECT_EQ(Process(), 1);
}

TEST_F(SegmentedAnswer, OneSegmentAloneIsNotEnough) {
    device->Settings().repeatCount = 1;
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(Segment(1, 0, false, Rest(0)));
    network.Expect(SegmentAck(1, 0));
    EXPECT_EQ(Process(), 0);
}

TEST_F(SegmentedAnswer, LostLastSegmentCostsAnAttempt) {
    log.EnableTrace();
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, true, Part(10, 13)));
    network.Expect(SegmentAck(1, 1));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(log.Text(), "0-1 message size error\nvalue : 42.000000\n");
}

TEST_F(SegmentedAnswer, EmptyApduInTheMiddleCostsAnAttempt) {
    log.EnableTrace();
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer("81 0A 00 06 01 00");
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(log.Text(), "0-1 message size error\nvalue : 42.000000\n");
}

TEST_F(SegmentedAnswer, Segments0And2With1MissingAreLoggedAndEndTheTransaction) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 2, false, Rest(10)));
    network.Expect(SegmentAck(1, 2));
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(log.Text(), "Error: not all segments recieved");
    EXPECT_TRUE(values.empty());
}

TEST_F(SegmentedAnswer, RepeatedSegmentReplacesTheEarlierOne) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, true, "FF FF FF"));
    network.Expect(SegmentAck(1, 1)).Answer(Segment(1, 1, true, Part(10, 13)));
    network.Expect(SegmentAck(1, 1)).Answer(Segment(1, 2, false, Rest(13)));
    network.Expect(SegmentAck(1, 2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(SegmentedAnswer, OutOfOrderSegmentsAreJoinedByTheirNumbers) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 2, true, Rest(13)));
    network.Expect(SegmentAck(1, 2)).Answer(Segment(1, 1, false, Part(10, 13)));
    network.Expect(SegmentAck(1, 1));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

// From 128 a sequence number is negative where char is signed. Segments must be joined in unsigned order.
TEST_F(SegmentedAnswer, NumbersAbove127AreJoinedAsUnsignedOctets) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(Segment(1, 0, true, Part(0, 1)));
    for (unsigned number = 1; number <= 200; ++number) {
        std::string const part = number < payload.size() ? Part(number, number + 1) : "";
        network.Expect(SegmentAck(1, number - 1)).Answer(Segment(1, number, number < 200, part));
    }
    network.Expect(SegmentAck(1, 200));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(SegmentedAnswer, NumbersThatWrapReplaceEarlierSegments) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(Segment(1, 0, true, "FF"));
    unsigned const last = 3 * 256;
    for (unsigned number = 1; number <= last; ++number) {
        // Only the last round has the payload: its octets are in the segments 1 to 255, and the first one in
        // 0.
        unsigned const index = number % 256;
        bool const kept = number > last - 256;
        std::string const part = !kept ? "FF" : index < payload.size() ? Part(index, index + 1) : "";
        network.Expect(SegmentAck(1, (number - 1) % 256)).Answer(Segment(1, index, number < last, part));
    }
    network.Expect(SegmentAck(1, 0));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(SegmentedAnswer, ErrorInTheMiddleIsAFailedAttempt) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(AnswerDatagram("50 01 0E 91 02 91 1F"));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(log.Text(), "0-1 std::bad_cast\n");
}

TEST_F(SegmentedAnswer, UnsegmentedAckInTheMiddleIsAFailedAttempt) {
    device->Settings().repeatCount = 1;
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(ValueAnswer(1));
    network.Expect(SegmentAck(1, 0));
    EXPECT_EQ(Process(), 0);
    EXPECT_TRUE(values.empty());
}

TEST_F(SegmentedAnswer, StaleAnswerEndsTheTransactionWithoutARepetition) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(Segment(77, 0, true, Part(0, 10)));
    network.Expect(SegmentAck(1, 0)).Answer(Segment(77, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1));
    EXPECT_EQ(Process(), 0);
    EXPECT_TRUE(values.empty());
}

TEST_F(SegmentedAnswer, InvokeIdOfTheFirstSegmentDecides) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(77, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1));
    EXPECT_EQ(Process(), 1);
}

TEST_F(SegmentedAnswer, JoinedOctetsThatAreNotAnAckCostTheAttempt) {
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, false, "FF FF"));
    network.Expect(SegmentAck(1, 1));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
}

TEST_F(SegmentedAnswer, UnsupportedPropertyEndsItAsAnswered) {
    payload = Hex(ReadResults(AnalogInput1, PropertyResult(200, Real42)));
    BeginAttempt(1);
    network.Expect(SegmentAck(1, 0)).Answer(Segment(1, 1, false, Rest(10)));
    network.Expect(SegmentAck(1, 1));
    EXPECT_EQ(Process(), 1);
    EXPECT_TRUE(values.empty());
}

TEST_F(SegmentedAnswer, OfARoutedDeviceIsAcknowledgedThroughTheRouter) {
    DeviceParameters parameters;
    parameters.mac = "10:20";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.ExpectAny().Answer(RoutedAnswerDatagram(5, "0A 14", ReadAckSegment(1, 0, true, Part(0, 10))));
    network.Expect("81 0A 00 10 01 24 00 05 02 0A 14 FF 40 01 00 01")
        .Answer(RoutedAnswerDatagram(5, "0A 14", ReadAckSegment(1, 1, false, Rest(10))));
    network.Expect("81 0A 00 10 01 24 00 05 02 0A 14 FF 40 01 01 01");
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

}  // namespace
