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
    for (long long piece = 1;; ++piece) {
        long long const before = test::HeapPieces();
        test::FailPiece(piece);
        failed += IsPolled(clients) ? 0 : 1;
        bool const wasRefused = test::HasFailedPiece();
        test::FailPiece(0);
        ASSERT_EQ(test::HeapPieces(), before) << piece;
        ASSERT_TRUE(IsPolled(clients)) << piece;
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
    long long piece = 0;
    for (bool wasRefused = true; wasRefused;) {
        long long const before = test::HeapPieces();
        test::FailPiece(++piece);
        try {
            blocks.RunOnce();
        } catch (std::exception const&) {
        }
        wasRefused = test::HasFailedPiece();
        test::FailPiece(0);
        blocks.RunOnce();
        ASSERT_EQ(test::HeapPieces(), before) << piece;
    }
    EXPECT_GT(piece, 100);
}

INSTANTIATE_TEST_SUITE_P(Workloads, RefusedMemory,
                         ::testing::Values("properties-3", "segments-20", "schedule-10", "write-1"),
                         [](auto const& instance) {
                             std::string name = instance.param;
                             name.replace(name.find('-'), 1, "");
                             return name;
                         });
