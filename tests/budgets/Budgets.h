#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

// A line of budgets.txt: what it may take from the heap on this machine.
struct Budget {
    std::string subject;  // client, block or load
    std::string workload;
    std::optional<double> allocations;
    std::optional<double> held;  // octets
};
void PrintTo(Budget const& budget, std::ostream* stream);

// The lines with this budget. Throws std::runtime_error for a line that is not one.
std::vector<Budget> BudgetsWith(std::optional<double> Budget::*budget);

// A name for the test of a line, of letters and digits.
std::string TestName(Budget const& budget);
