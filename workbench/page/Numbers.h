#pragma once

#include <optional>
#include <string>

#include "HttpRequest.h"

namespace workbench {

constexpr unsigned long long LargestNumber = 1ULL << 53;

// A parameter of a request: a number between both limits, the default without it, none for anything else.
std::optional<unsigned long long> NumberParameter(HttpRequest const& request, std::string const& name,
                                                  unsigned long long otherwise, unsigned long long least,
                                                  unsigned long long greatest);

// What is wrong with it.
HttpResponse NumberProblem(HttpRequest const& request, std::string const& name, std::string const& allowed);

}  // namespace workbench
