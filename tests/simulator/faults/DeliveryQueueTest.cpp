#include "DeliveryQueue.h"

#include <gtest/gtest.h>

#include "Hex.h"

using simulator::Delivery;
using simulator::DeliveryQueue;
using std::chrono::milliseconds;

namespace {

simulator::Moment At(int time) {
    simulator::Moment moment;
    moment.sinceStart = milliseconds(time);
    return moment;
}

Delivery DeliveryOf(char const* octets, int delay) {
    return {{{}, test::Hex(octets)}, milliseconds(delay)};
}

std::string Next(DeliveryQueue& queue, int time) {
    auto const found = queue.Next(At(time));
    return found ? test::ToHex(found->datagram.octets) : "none";
}

}  // namespace

TEST(DeliveryQueue, GivesThemAtTheirTimeAndInItsOrder) {
    DeliveryQueue queue;
    EXPECT_FALSE(queue.NextTime());
    queue.Add(DeliveryOf("01", 300), At(100));
    queue.Add(DeliveryOf("02", 200), At(150));
    queue.Add(DeliveryOf("03", 100), At(300));
    EXPECT_EQ(queue.NextTime(), milliseconds(350));
    EXPECT_EQ(Next(queue, 349), "none");
    EXPECT_EQ(Next(queue, 350), "02");
    EXPECT_EQ(Next(queue, 399), "none");
    EXPECT_EQ(Next(queue, 1000), "01") << "of one time, the one that came first";
    EXPECT_EQ(Next(queue, 1000), "03");
    EXPECT_EQ(Next(queue, 1000), "none");
}

TEST(DeliveryQueue, IsBounded) {
    DeliveryQueue queue;
    for (std::size_t i = 0; i < DeliveryQueue::Most + 10; ++i) {
        queue.Add(DeliveryOf("01", 1), At(0));
    }
    std::size_t count = 0;
    while (queue.Next(At(1))) {
        ++count;
    }
    EXPECT_EQ(count, DeliveryQueue::Most);
}
