#include "Signal.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace simulator {

namespace {

constexpr double kFullCircle = 6.283185307179586;

double seconds(std::chrono::milliseconds time) {
    return static_cast<double>(time.count()) / 1000.0;
}

// How far into its period the time is: 0 up to, not including, 1.
double phase(double time, double period) {
    double const periods = time / period;
    return periods - std::floor(periods);
}

}  // namespace

double RampSignal::at(Moment const& now) const {
    return m_from + (m_to - m_from) * phase(seconds(now.sinceStart), m_period);
}

double CurveSignal::at(Moment const& now) const {
    return m_mean + m_amplitude * std::cos(kFullCircle * phase(seconds(now.local) - m_peak, m_period));
}

double ToggleSignal::at(Moment const& now) const {
    return phase(seconds(now.sinceStart), m_period) < 0.5 ? 0.0 : 1.0;
}

double CounterSignal::at(Moment const& now) const {
    return std::floor(m_start + m_rate * seconds(now.sinceStart));
}

double StepsSignal::at(Moment const& now) const {
    auto const count = m_values.size();
    auto const step =
        static_cast<std::size_t>(phase(seconds(now.sinceStart), m_period) * static_cast<double>(count));
    return m_values[std::min(step, count - 1)];
}

}  // namespace simulator
