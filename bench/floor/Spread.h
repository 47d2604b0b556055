#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace bench {

// Summarises the samples of one figure.
struct Spread {
    double median;
    double min;
    double max;
};

// Needs at least one sample.
inline Spread SpreadOf(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    auto const count = samples.size();
    return {(samples[(count - 1) / 2] + samples[count / 2]) / 2, samples.front(), samples.back()};
}

// Returns a JSON object.
inline std::string ToJson(Spread const& spread) {
    return "{\"median\": " + std::to_string(spread.median) + ", \"min\": " + std::to_string(spread.min) +
           ", \"max\": " + std::to_string(spread.max) + "}";
}

}  // namespace bench
