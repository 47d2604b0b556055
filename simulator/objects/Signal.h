#pragma once

#include <utility>
#include <vector>

#include "Moment.h"

namespace simulator {

// A number that may move with time.
class Signal {
public:
    virtual ~Signal() = default;
    virtual double at(Moment const& now) const = 0;
};

// Periods are in seconds and above 0. All but the curve run from the simulator's start.

class ConstantSignal : public Signal {
public:
    explicit ConstantSignal(double value) : m_value(value) {}
    double at(Moment const&) const override { return m_value; }

private:
    double m_value;
};

// Goes evenly from one number to the other in one period, then begins again.
class RampSignal : public Signal {
public:
    RampSignal(double from, double to, double period) : m_from(from), m_to(to), m_period(period) {}
    double at(Moment const& now) const override;

private:
    double m_from, m_to, m_period;
};

// A sine around a mean; its highest point comes `peak` seconds into each period of the wall clock, whose
// periods are counted from midnight on. With a period of 86400 it is the course of a day.
class CurveSignal : public Signal {
public:
    CurveSignal(double mean, double amplitude, double period, double peak)
        : m_mean(mean), m_amplitude(amplitude), m_period(period), m_peak(peak) {}
    double at(Moment const& now) const override;

private:
    double m_mean, m_amplitude, m_period, m_peak;
};

// 0 for the first half of the period and 1 for the second.
class ToggleSignal : public Signal {
public:
    explicit ToggleSignal(double period) : m_period(period) {}
    double at(Moment const& now) const override;

private:
    double m_period;
};

// Grows by `rate` a second from `start` on, in whole steps.
class CounterSignal : public Signal {
public:
    CounterSignal(double start, double rate) : m_start(start), m_rate(rate) {}
    double at(Moment const& now) const override;

private:
    double m_start, m_rate;
};

// Takes one number after the other, each for an equal part of the period.
class StepsSignal : public Signal {
public:
    StepsSignal(std::vector<double> values, double period) : m_values(std::move(values)), m_period(period) {}
    double at(Moment const& now) const override;

private:
    std::vector<double> m_values;  // not empty
    double m_period;
};

}  // namespace simulator
