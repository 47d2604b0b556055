#include "MessageRing.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

std::string Texts(MessageRing::Taken const& taken) {
    std::string all;
    for (SharedText const& text : taken.messages) {
        all += *text;
    }
    return all;
}

TEST(MessageRing, GivesEachReaderWhatFollowsItsPosition) {
    MessageRing ring;
    ring.Push("a");
    ring.Push("b");
    EXPECT_EQ(Texts(ring.Take(0)), "ab");
    EXPECT_EQ(Texts(ring.Take(1)), "b");
    EXPECT_EQ(ring.Take(0).next, 2u);
    EXPECT_EQ(Texts(ring.Take(2)), "");
    EXPECT_EQ(ring.Take(0).lost, 0u);
}

TEST(MessageRing, SharesItsTexts) {
    MessageRing ring;
    ring.Push("a");
    EXPECT_EQ(ring.Take(0).messages.front(), ring.Take(0).messages.front());
}

TEST(MessageRing, CountsWhatASlowReaderHasLost) {
    MessageRing ring(3, 1000);
    for (char const c : std::string("abcde")) {
        ring.Push(std::string(1, c));
    }
    MessageRing::Taken const taken = ring.Take(1);
    EXPECT_EQ(taken.lost, 1u);
    EXPECT_EQ(Texts(taken), "cde");
    EXPECT_EQ(taken.next, 5u);
    EXPECT_EQ(ring.Begin(), 2u);
}

TEST(MessageRing, IsBoundedInOctetsToo) {
    MessageRing ring(100, 10);
    ring.Push("1234");
    ring.Push("5678");
    EXPECT_EQ(ring.Begin(), 0u);
    ring.Push("9abc");
    EXPECT_EQ(ring.Begin(), 1u);
    // One message is kept however large it is.
    ring.Push(std::string(100, 'x'));
    EXPECT_EQ(ring.End() - ring.Begin(), 1u);
}

TEST(MessageRing, GivesLargeMessagesInParts) {
    MessageRing ring;
    std::string const large(std::size_t{400} << 10, 'x');
    ring.Push(large);
    ring.Push(large);
    ring.Push(large);
    EXPECT_EQ(ring.Take(0).messages.size(), 2u);
    EXPECT_EQ(ring.Take(0).next, 2u);
    EXPECT_EQ(ring.Take(2).messages.size(), 1u);
}

TEST(MessageRing, HasNoNextPositionFromBeforeItWasCleared) {
    MessageRing ring;
    ring.Push("a");
    ring.Clear();
    EXPECT_EQ(ring.Take(1).lost, 1u);
    ring.Push("b");
    EXPECT_EQ(Texts(ring.Take(ring.Begin())), "b");
}

TEST(MessageRing, DoesNotWaitWhenItIsClosed) {
    MessageRing ring;
    ring.Close();
    ring.Wait(0, std::chrono::hours(1));
    EXPECT_EQ(ring.End(), 0u);
}

}  // namespace
