#include "Signal.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace simulator {

namespace {

constexpr double FullCircle = 6.283185307179586;

double Seconds(std::chrono::milliseconds time) {
    return static_cast<double>(time.count()) / 1000.0;
}

// The part of the period that has passed: 0 up to, not including, 1.
double Phase(double time, double period) {
    double const periods = time / period;
    return periods - std::floor(periods);
}

}  // namespace

double RampSignal::At(Moment const& now) const {
    return from + (to - from) * Phase(Seconds(now.sinceStart), period);
}

double CurveSignal::At(Moment const& now) const {
    return mean + amplitude * std::cos(FullCircle * Phase(Seconds(now.local) - peak, period));
}

double ToggleSignal::At(Moment const& now) const {
    return Phase(Seconds(now.sinceStart), period) < 0.5 ? 0.0 : 1.0;
}

double CounterSignal::At(Moment const& now) const {
    return std::floor(start + rate * Seconds(now.sinceStart));
}

double StepsSignal::At(Moment const& now) const {
    auto const count = values.size();
    auto const step =
        static_cast<std::size_t>(Phase(Seconds(now.sinceStart), period) * static_cast<double>(count));
    return values[std::min(step, count - 1)];
}

}  // namespace simulator
