#include "PopFront.h"

#include <gtest/gtest.h>

#include "Exceptions.h"

TEST(PopFront, RemovesTheFirstOctet) {
    std::deque<char> queue{1, 2};
    EXPECT_EQ(PopFront(queue), 1);
    EXPECT_EQ(PopFront(queue), 2);
    EXPECT_TRUE(queue.empty());
}

TEST(PopFront, EmptyQueueIsAParseError) {
    std::deque<char> queue;
    EXPECT_THROW(PopFront(queue), ParseException);
}
