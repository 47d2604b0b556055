#include "FakeStream.h"

#include <gtest/gtest.h>

#include <deque>

#include "Exceptions.h"
#include "Hex.h"

using test::Hex;
using test::Octets;
using test::ToHex;

namespace {

Octets ReceiveAtMost(IStreamBase& stream, unsigned int count) {
    Octets buffer(count);
    buffer.resize(stream.Receive(buffer.data(), count));
    return buffer;
}

// A stream that reports that nothing is available, whatever it has.
class EmptyLookingStream : public FakeStream {
public:
    using FakeStream::FakeStream;
    int Available() override { return 0; }
};

}  // namespace

TEST(FakeStream, EmptyStreamHasNothingAvailableAndReadByteThrows) {
    FakeStream stream{Octets()};
    EXPECT_EQ(stream.Available(), 0);
    EXPECT_EQ(ReceiveAtMost(stream, 4).size(), 0u);
    try {
        stream.ReadByte();
        FAIL() << "nothing to read";
    } catch (WrongLengthException const& error) {
        EXPECT_STREQ(error.what(), "message size error");
    }
}

TEST(FakeStream, ReceiveWithCountLargerThanRestDeliversTheRest) {
    FakeStream stream(Hex("01 02 03"));
    stream.ReadByte();
    EXPECT_EQ(ToHex(ReceiveAtMost(stream, 100)), "02 03");
    EXPECT_EQ(stream.Available(), 0);
}

TEST(FakeStream, SendReturnsMinusOneAndChangesNothing) {
    FakeStream stream(Hex("01 02"));
    EXPECT_EQ(stream.Send("abc", 3), -1);
    EXPECT_EQ(stream.Send(nullptr, 0), -1);
    EXPECT_EQ(stream.Available(), 2);
    EXPECT_EQ(ToHex(ReceiveAtMost(stream, 2)), "01 02");
}

TEST(FakeStream, ReadsOctetsInOrderFromTheFront) {
    FakeStream stream(Hex("FF 00 80 7F 01"));
    EXPECT_EQ(static_cast<unsigned char>(stream.ReadByte()), 0xFF);
    EXPECT_EQ(stream.Available(), 4);
    EXPECT_EQ(ToHex(ReceiveAtMost(stream, 2)), "00 80");
    EXPECT_EQ(ReceiveAtMost(stream, 0).size(), 0u);
    EXPECT_EQ(stream.ReadByte(), 0x7F);
    EXPECT_EQ(stream.ReadByte(), 1);
    EXPECT_THROW(stream.ReadByte(), WrongLengthException);
}

TEST(FakeStream, ReadsFromACopyOfVectorOrDeque) {
    Octets octets = Hex("01 02");
    FakeStream overVector(octets);
    octets[0] = 9;
    EXPECT_EQ(overVector.ReadByte(), 1);
    EXPECT_EQ(octets.size(), 2u);

    std::deque<char> queue{3, 4};
    FakeStream overDeque(queue);
    queue[0] = 9;
    EXPECT_EQ(overDeque.ReadByte(), 3);
    EXPECT_EQ(queue.size(), 2u);
}

TEST(FakeStream, ReadByteAsksTheVirtualAvailable) {
    EmptyLookingStream stream(Hex("01"));
    EXPECT_THROW(stream.ReadByte(), WrongLengthException);
}
