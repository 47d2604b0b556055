#include "Sparkline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace workbench {

namespace {

constexpr int Heights = 8;

bool IsShown(Sample const& sample) {
    return std::isfinite(sample.value) && sample.quality != QualityKind::Bad;
}

struct Range {
    double least = std::numeric_limits<double>::infinity();
    double greatest = -std::numeric_limits<double>::infinity();
};

Range RangeOf(std::vector<Sample> const& samples) {
    Range range;
    for (Sample const& sample : samples) {
        if (IsShown(sample)) {
            range.least = std::min(range.least, sample.value);
            range.greatest = std::max(range.greatest, sample.value);
        }
    }
    return range;
}

// U+2581 to U+2588. A value that never changes is in the middle.
std::string BlockOf(double value, Range const& range) {
    // Halves, since the difference of two finite numbers may be infinite.
    double const all = range.greatest / 2 - range.least / 2;
    double const part = all > 0 ? (value / 2 - range.least / 2) / all : 0.5;
    int const height = std::clamp(static_cast<int>(part * Heights), 0, Heights - 1);
    return {'\xE2', '\x96', static_cast<char>(0x81 + height)};
}

}  // namespace

std::string Sparkline(std::vector<Sample> const& samples, long long from, long long to, std::size_t width) {
    Range const range = RangeOf(samples);
    if (range.least > range.greatest || to <= from) {
        return {};
    }
    std::string line;
    auto next = samples.begin();
    for (std::size_t i = 1; i <= width; ++i) {
        auto const share = static_cast<double>(i) / static_cast<double>(width);
        long long const end = from + static_cast<long long>(static_cast<double>(to - from) * share);
        next = std::find_if(next, samples.end(), [=](Sample const& sample) { return sample.time > end; });
        bool const hasValue = next != samples.begin() && IsShown(*(next - 1));
        line += hasValue ? BlockOf((next - 1)->value, range) : " ";
    }
    return line;
}

}  // namespace workbench
