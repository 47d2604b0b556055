// The device client, and a block, when any one of their allocations fails.

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>
#include <string>

#include "Clients.h"
#include "Heap.h"
#include "HostedBlocks.h"

using bench::Clients;

namespace {

class RefusedMemory : public ::testing::TestWithParam<char const*> {};

// Whether every value was delivered. No exception may leave the client, which runs in a task of the host.
bool IsPolled(Clients& clients) {
    try {
        clients.Poll();
        return true;
    } catch (std::runtime_error const&) {  // from the check in Clients
        return false;
    }
}

}  // namespace

TEST_P(RefusedMemory, IsAFailedAttemptThatLeavesNothing) {
    Clients clients(GetParam(), 1);
    ASSERT_TRUE(IsPolled(clients));  // allocates what is kept
    long long failed = 0;
    for (long long allocation = 1;; ++allocation) {
        long long const before = test::HeapBlocks();
        test::FailAllocation(allocation);
        failed += IsPolled(clients) ? 0 : 1;
        bool const wasRefused = test::HasFailedAllocation();
        test::FailAllocation(0);
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
        ASSERT_TRUE(IsPolled(clients)) << allocation;
        if (!wasRefused) {
            break;
        }
    }
    EXPECT_GT(failed, 15);
}

// Here the runtime's part of a cycle may fail too, which it may report with an exception.
TEST(RefusedMemoryOfABlock, LeavesNothingAfterACycle) {
    bench::LoadAddin();
    bench::HostedBlocks blocks("properties-3", 2, 1);
    blocks.Make();
    blocks.Init();
    blocks.RunOnce();
    long long allocation = 0;
    for (bool wasRefused = true; wasRefused;) {
        long long const before = test::HeapBlocks();
        test::FailAllocation(++allocation);
        try {
            blocks.RunOnce();
        } catch (std::exception const&) {
        }
        wasRefused = test::HasFailedAllocation();
        test::FailAllocation(0);
        blocks.RunOnce();
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
    }
    EXPECT_GT(allocation, 50);
}

INSTANTIATE_TEST_SUITE_P(Workloads, RefusedMemory,
                         ::testing::Values("properties-3", "segments-20", "schedule-10", "write-1"),
                         [](auto const& instance) {
                             std::string name = instance.param;
                             name.replace(name.find('-'), 1, "");
                             return name;
                         });
