#include "History.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace workbench {

namespace {

using Indices = std::array<std::size_t, 4>;

// The first, the least, the greatest and the last of a span of samples, which is not empty. NaN is neither
// least nor greatest as long as there are numbers.
Indices Outline(std::vector<Sample> const& samples, std::size_t from, std::size_t to) {
    std::size_t least = from;
    std::size_t greatest = from;
    for (std::size_t i = from; i < to; ++i) {
        double const value = samples[i].value;
        least = value < samples[least].value || std::isnan(samples[least].value) ? i : least;
        greatest = value > samples[greatest].value || std::isnan(samples[greatest].value) ? i : greatest;
    }
    Indices outline = {from, least, greatest, to - 1};
    std::sort(outline.begin(), outline.end());
    return outline;
}

}  // namespace

bool operator==(Sample const& left, Sample const& right) {
    bool const isSame = left.value == right.value || (std::isnan(left.value) && std::isnan(right.value));
    return isSame && left.time == right.time && left.quality == right.quality;
}

std::vector<Sample> Thinned(std::vector<Sample> const& samples, std::size_t most) {
    if (samples.size() <= most || samples.empty()) {
        return samples;
    }
    std::size_t const spans = std::max<std::size_t>(most / 4, 1);
    double const begin = static_cast<double>(samples.front().time);
    double const width = (static_cast<double>(samples.back().time) - begin) / static_cast<double>(spans);
    std::vector<Sample> thinned;
    for (std::size_t span = 0, from = 0; span < spans && from < samples.size(); ++span) {
        std::size_t to = from;
        bool const isLast = span + 1 == spans;
        double const end = begin + width * static_cast<double>(span + 1);
        while (to < samples.size() && (isLast || static_cast<double>(samples[to].time) < end)) {
            ++to;
        }
        if (to > from) {
            Indices const outline = Outline(samples, from, to);
            for (std::size_t i = 0; i < outline.size(); ++i) {
                if (i == 0 || outline[i] != outline[i - 1]) {
                    thinned.push_back(samples[outline[i]]);
                }
            }
        }
        from = to;
    }
    return thinned;
}

}  // namespace workbench
