#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace bench {

// Summarises the samples of one figure.
struct Spread {
    double Median;
    double Min;
    double Max;
};

// Needs at least one sample.
inline Spread SpreadOf(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    auto const count = samples.size();
    return {(samples[(count - 1) / 2] + samples[count / 2]) / 2, samples.front(), samples.back()};
}

// Returns a JSON object.
inline std::string ToJson(Spread const& spread) {
    return "{\"median\": " + std::to_string(spread.Median) + ", \"min\": " + std::to_string(spread.Min) +
           ", \"max\": " + std::to_string(spread.Max) + "}";
}

}  // namespace bench
