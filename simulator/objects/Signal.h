#pragma once

#include <utility>
#include <vector>

#include "Moment.h"

namespace simulator {

// A number that may move with time.
class Signal {
public:
    virtual ~Signal() = default;
    virtual double At(Moment const& now) const = 0;
};

// Periods are in seconds and above 0. The time of all but the curve counts from the start of the simulator.

class ConstantSignal : public Signal {
public:
    explicit ConstantSignal(double constant) : value(constant) {}
    double At(Moment const&) const override { return value; }

private:
    double value;
};

// Changes evenly from one number to the other in each period.
class RampSignal : public Signal {
public:
    RampSignal(double first, double last, double seconds) : from(first), to(last), period(seconds) {}
    double At(Moment const& now) const override;

private:
    double from, to, period;
};

// A sine around a mean. Its maximum is `peak` seconds after the start of each period. Periods follow the wall
// clock and count from midnight, so a period of 86400 is a day.
class CurveSignal : public Signal {
public:
    CurveSignal(double meanValue, double peakAmplitude, double seconds, double peakSeconds)
        : mean(meanValue), amplitude(peakAmplitude), period(seconds), peak(peakSeconds) {}
    double At(Moment const& now) const override;

private:
    double mean, amplitude, period, peak;
};

// 0 for the first half of the period and 1 for the second.
class ToggleSignal : public Signal {
public:
    explicit ToggleSignal(double seconds) : period(seconds) {}
    double At(Moment const& now) const override;

private:
    double period;
};

// Grows by `rate` a second from `start`, in whole steps.
class CounterSignal : public Signal {
public:
    CounterSignal(double first, double perSecond) : start(first), rate(perSecond) {}
    double At(Moment const& now) const override;

private:
    double start, rate;
};

// Has one number after the other, each for an equal part of the period.
class StepsSignal : public Signal {
public:
    StepsSignal(std::vector<double> numbers, double seconds) : values(std::move(numbers)), period(seconds) {}
    double At(Moment const& now) const override;

private:
    std::vector<double> values;  // not empty
    double period;
};

}  // namespace simulator
