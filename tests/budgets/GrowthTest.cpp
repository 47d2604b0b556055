// What a poll takes from the heap grows no faster than the workload, and not with the number of objects.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "Clients.h"
#include "HeapUse.h"
#include "HostedBlocks.h"

namespace {

constexpr char const* Usual = "properties-3";

double Allocations(std::string const& workload, int objects = 100) {
    return bench::HeapUseOf<bench::Clients>(workload, objects).allocations;
}

// The step from 2 N to 3 N is not larger than that from N to 2 N, but for a few lists and texts that double.
constexpr double Doublings = 5;

class AllocationsOf : public testing::TestWithParam<std::pair<std::string, int>> {};

TEST_P(AllocationsOf, GrowNoFasterThanTheAnswer) {
    auto const [kind, number] = GetParam();
    auto const of = [kind = kind, number = number](int times) {
        return Allocations(kind + "-" + std::to_string(times * number));
    };
    double const one = of(1);
    double const two = of(2);
    double const three = of(3);
    EXPECT_GT(two, one);
    EXPECT_LE(three - two, 1.1 * (two - one) + Doublings);
}

INSTANTIATE_TEST_SUITE_P(Workloads, AllocationsOf,
                         testing::Values(std::pair("properties", 11), std::pair("segments", 10),
                                         std::pair("schedule", 5)),
                         [](auto const& instance) { return instance.param.first; });

// The first objects of a poll fill the store that serves the others, and those of a small poll are dearer for
// it.
TEST(AllocationsOfObjects, AreFlat) {
    double const few = Allocations(Usual, 10);
    double const many = Allocations(Usual, 10000);
    EXPECT_LE(many, few);
    EXPECT_GT(many, 0.7 * few);
}

// What a client or a block holds besides its objects makes those of a small one look larger.
TEST(MemoryOfObjects, OfAClientDoesNotGrow) {
    EXPECT_LE(bench::HeapUseOf<bench::Clients>(Usual, 10000).held,
              bench::HeapUseOf<bench::Clients>(Usual, 10).held);
}

TEST(MemoryOfObjects, OfABlockDoesNotGrow) {
    bench::LoadAddin();
    EXPECT_LE(bench::HeapUseOf<bench::HostedBlocks>(Usual, 10000).held,
              bench::HeapUseOf<bench::HostedBlocks>(Usual, 10).held);
}

}  // namespace
