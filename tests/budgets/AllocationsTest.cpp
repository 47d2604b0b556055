// The number of heap allocations that a poll may make, and that it grows in proportion to the workload.

#include <gtest/gtest.h>

#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "Clients.h"
#include "Heap.h"

namespace {

constexpr int Objects = 100;

// Allocations per object, in a poll after the first.
double Allocations(std::string const& workload, int objects = Objects) {
    bench::Clients clients(workload, objects);
    clients.Poll();
    long long const before = test::HeapTotalsSoFar().allocations;
    clients.Poll();
    return static_cast<double>(test::HeapTotalsSoFar().allocations - before) / objects;
}

struct Budget {
    std::string workload;
    double instructions = 0;
    double allocations = 0;
};
void PrintTo(Budget const& budget, std::ostream* stream) {
    *stream << budget.workload;
}

std::vector<Budget> Budgets() {
    std::vector<Budget> budgets;
    std::ifstream file(BUDGETS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        Budget budget;
        if (words >> budget.workload >> budget.instructions >> budget.allocations) {
            budgets.push_back(budget);
        }
    }
    return budgets;
}

class AllocationBudget : public testing::TestWithParam<Budget> {};

TEST_P(AllocationBudget, IsKept) {
    double const taken = Allocations(GetParam().workload);
    EXPECT_LE(taken, GetParam().allocations) << "allocations an object";
    EXPECT_GT(taken, 0) << "allocations are counted at all";
}

INSTANTIATE_TEST_SUITE_P(Workloads, AllocationBudget, testing::ValuesIn(Budgets()), [](auto const& instance) {
    std::string name = instance.param.workload;
    name.replace(name.find('-'), 1, "");
    return name;
});

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

TEST(AllocationsOfObjects, AreFlat) {
    double const few = Allocations("properties-3", 10);
    EXPECT_LE(Allocations("properties-3", 10000), few);
    EXPECT_GT(Allocations("properties-3", 10000), 0.8 * few);
}

}  // namespace
