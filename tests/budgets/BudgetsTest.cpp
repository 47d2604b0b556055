// The most that a poll and loading may take from the heap (budgets.txt).

#include <gtest/gtest.h>

#include <string>

#include "Budgets.h"
#include "Clients.h"
#include "Heap.h"
#include "HeapUse.h"
#include "HostedBlocks.h"

namespace {

// Of a budget. A lower figure is a budget that no longer protects anything: lower it to a tenth above the
// figure.
constexpr double LeastUse = 0.75;
constexpr int Objects = 100;
constexpr int Variables = 1000;

void NeedAddin() {
    static bench::LoadTimes const loaded = bench::LoadAddin();
    static_cast<void>(loaded);
}

bench::HeapUse UseOf(Budget const& budget) {
    if (budget.subject == "client") {
        return bench::HeapUseOf<bench::Clients>(budget.workload, Objects);
    }
    NeedAddin();
    return bench::HeapUseOf<bench::HostedBlocks>(budget.workload, Objects);
}

// Allocations per variable in a phase of loading a block.
double AllocationsOfLoading(std::string const& phase) {
    NeedAddin();
    bench::HostedBlocks blocks("properties-1", Variables, 1);
    auto const allocations = [](auto const& body) {
        long long const before = test::HeapTotalsSoFar().allocations;
        body();
        return static_cast<double>(test::HeapTotalsSoFar().allocations - before) / Variables;
    };
    blocks.Declare();
    blocks.Compile();
    double const script = allocations([&] { blocks.Run(); });
    double const inited = allocations([&] { blocks.Init(); });
    return phase == "script" ? script : inited;
}

class AllocationBudget : public testing::TestWithParam<Budget> {};

TEST_P(AllocationBudget, IsKept) {
    double const taken = GetParam().subject == "load" ? AllocationsOfLoading(GetParam().workload)
                                                      : UseOf(GetParam()).allocations;
    EXPECT_LE(taken, *GetParam().allocations) << "allocations an object";
    EXPECT_GT(taken, LeastUse * *GetParam().allocations) << "allocations an object: lower the budget";
}

INSTANTIATE_TEST_SUITE_P(Rows, AllocationBudget, testing::ValuesIn(BudgetsWith(&Budget::allocations)),
                         [](auto const& instance) { return TestName(instance.param); });

class MemoryBudget : public testing::TestWithParam<Budget> {};

TEST_P(MemoryBudget, IsKept) {
    double const held = UseOf(GetParam()).held;
    EXPECT_LE(held, *GetParam().held) << "octets an object";
    EXPECT_GT(held, LeastUse * *GetParam().held) << "octets an object: lower the budget";
}

INSTANTIATE_TEST_SUITE_P(Rows, MemoryBudget, testing::ValuesIn(BudgetsWith(&Budget::held)),
                         [](auto const& instance) { return TestName(instance.param); });

}  // namespace
