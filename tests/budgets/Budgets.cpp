#include "Budgets.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

constexpr bool Has64Bits = sizeof(void*) == 8;

std::optional<double> Figure(std::string const& word) {
    return word == "-" ? std::nullopt : std::optional(std::stod(word));
}

Budget BudgetOf(std::string const& line) {
    std::istringstream words(line);
    std::string instructions;
    std::string targetInstructions;
    std::string allocations;
    std::string held64;
    std::string held32;
    Budget budget;
    if (!(words >> budget.subject >> budget.workload >> instructions >> targetInstructions >> allocations >>
          held64 >> held32)) {
        throw std::runtime_error(std::string(BUDGETS) + ": not a budget: " + line);
    }
    budget.allocations = Figure(allocations);
    budget.held = Figure(Has64Bits ? held64 : held32);
    return budget;
}

}  // namespace

void PrintTo(Budget const& budget, std::ostream* stream) {
    *stream << budget.subject << ' ' << budget.workload;
}

std::vector<Budget> BudgetsWith(std::optional<double> Budget::*figure) {
    std::vector<Budget> budgets;
    std::ifstream file(BUDGETS);
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        Budget const budget = BudgetOf(line);
        if (budget.*figure) {
            budgets.push_back(budget);
        }
    }
    return budgets;
}

std::string TestName(Budget const& budget) {
    std::string name;
    std::string const text = budget.subject + budget.workload;
    std::copy_if(text.begin(), text.end(), std::back_inserter(name),
                 [](unsigned char letter) { return std::isalnum(letter) != 0; });
    return name;
}
