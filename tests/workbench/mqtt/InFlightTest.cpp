#include "InFlight.h"

#include <gtest/gtest.h>

namespace {

using workbench::InFlight;

TEST(InFlight, HasRoomUntilItHasTheMostMessages) {
    InFlight messages;
    for (std::size_t i = 1; i < InFlight::MostMessages; ++i) {
        messages.Sent(static_cast<int>(i), 1);
        EXPECT_TRUE(messages.HasRoom());
    }
    messages.Sent(static_cast<int>(InFlight::MostMessages), 1);
    EXPECT_FALSE(messages.HasRoom());
}

TEST(InFlight, HasRoomAgainWhenHalfIsDone) {
    InFlight messages;
    int const most = static_cast<int>(InFlight::MostMessages);
    for (int i = 0; i < most; ++i) {
        messages.Sent(i, 1);
    }
    for (int i = 0; i < most / 2 - 1; ++i) {
        messages.Done(i);
        EXPECT_FALSE(messages.HasRoom());
    }
    messages.Done(most / 2);
    EXPECT_TRUE(messages.HasRoom());
}

TEST(InFlight, TakesOneMessageBeyondTheMostOctets) {
    InFlight messages;
    std::size_t const large = 2 * InFlight::MostOctets;
    messages.Sent(1, 10);
    messages.Sent(2, large);
    EXPECT_FALSE(messages.HasRoom());
    EXPECT_EQ(messages.Octets(), large + 10);
    messages.Done(1);
    EXPECT_FALSE(messages.HasRoom());
    messages.Done(2);
    EXPECT_TRUE(messages.HasRoom());
    EXPECT_EQ(messages.Octets(), 0U);
}

TEST(InFlight, CountsMessagesWithTheSameIdOnceEach) {
    InFlight messages;
    messages.Sent(7, 3);
    messages.Sent(7, 3);
    messages.Done(7);
    EXPECT_EQ(messages.Messages(), 1U);
    messages.Done(7);
    messages.Done(7);
    messages.Done(8);
    EXPECT_EQ(messages.Messages(), 0U);
    EXPECT_EQ(messages.Octets(), 0U);
}

TEST(InFlight, IsEmptyAfterClear) {
    InFlight messages;
    std::size_t const most = InFlight::MostOctets;
    messages.Sent(1, most);
    messages.Clear();
    EXPECT_TRUE(messages.HasRoom());
    EXPECT_EQ(messages.Messages(), 0U);
}

}  // namespace
