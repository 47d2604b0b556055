#include "DeliveryQueue.h"

#include <gtest/gtest.h>

#include "Hex.h"

using simulator::Delivery;
using simulator::DeliveryQueue;
using std::chrono::milliseconds;

namespace {

simulator::Moment at(int time) {
    simulator::Moment moment;
    moment.sinceStart = milliseconds(time);
    return moment;
}

Delivery delivery(char const* octets, int delay) {
    return {{{}, test::Hex(octets)}, milliseconds(delay)};
}

std::string next(DeliveryQueue& queue, int time) {
    auto const found = queue.next(at(time));
    return found ? test::ToHex(found->datagram.octets) : "none";
}

}  // namespace

TEST(DeliveryQueue, GivesThemAtTheirTimeAndInItsOrder) {
    DeliveryQueue queue;
    EXPECT_FALSE(queue.nextTime());
    queue.add(delivery("01", 300), at(100));
    queue.add(delivery("02", 200), at(150));
    queue.add(delivery("03", 100), at(300));
    EXPECT_EQ(queue.nextTime(), milliseconds(350));
    EXPECT_EQ(next(queue, 349), "none");
    EXPECT_EQ(next(queue, 350), "02");
    EXPECT_EQ(next(queue, 399), "none");
    EXPECT_EQ(next(queue, 1000), "01") << "of one time, the one that came first";
    EXPECT_EQ(next(queue, 1000), "03");
    EXPECT_EQ(next(queue, 1000), "none");
}

TEST(DeliveryQueue, IsBounded) {
    DeliveryQueue queue;
    for (std::size_t i = 0; i < DeliveryQueue::kMost + 10; ++i) {
        queue.add(delivery("01", 1), at(0));
    }
    std::size_t count = 0;
    while (queue.next(at(1))) {
        ++count;
    }
    EXPECT_EQ(count, DeliveryQueue::kMost);
}
