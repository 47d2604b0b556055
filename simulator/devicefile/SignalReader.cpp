#include "SignalReader.h"

#include <cmath>

#include "Mistake.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

using SignalPtr = std::shared_ptr<Signal const>;

constexpr double kDay = 86400;
constexpr double kLargest = 1e15;

// A number that arithmetic stays exact enough with; `fallback` if the field is not given.
double number(ScriptValue const& value, char const* name, double fallback) try {
    ScriptValue const& field = value[name];
    double const found = field.isNil() ? fallback : checks::number(field);
    if (!(std::fabs(found) <= kLargest)) {
        throw Mistake("is too large");
    }
    return found;
} catch (Mistake const& mistake) {
    throw mistake.in(name);
}

double period(ScriptValue const& value, double fallback) {
    double const found = number(value, "period", fallback);
    if (found < 0.001) {
        throw Mistake("period: must be above 0");
    }
    return found;
}

SignalPtr ramp(ScriptValue const& value) {
    checks::fields(value, {"from", "to", "period"});
    return std::make_shared<RampSignal>(number(value, "from", 0), number(value, "to", 100),
                                        period(value, 60));
}

SignalPtr curve(ScriptValue const& value) {
    checks::fields(value, {"mean", "amplitude", "period", "peak"});
    double const length = period(value, kDay);
    return std::make_shared<CurveSignal>(number(value, "mean", 0), number(value, "amplitude", 1), length,
                                         number(value, "peak", length / 2));
}

SignalPtr toggle(ScriptValue const& value) {
    checks::fields(value, {"period"});
    return std::make_shared<ToggleSignal>(period(value, 60));
}

SignalPtr counter(ScriptValue const& value) {
    checks::fields(value, {"start", "rate"});
    return std::make_shared<CounterSignal>(number(value, "start", 0), number(value, "rate", 1));
}

SignalPtr steps(ScriptValue const& value) {
    checks::fields(value, {"values", "period"});
    std::vector<double> values;
    for (ScriptValue const& step : checks::list(value["values"])) {
        values.push_back(checks::number(step));
        if (!(std::fabs(values.back()) <= kLargest)) {
            throw Mistake("values: a number is too large");
        }
    }
    if (values.empty()) {
        throw Mistake("values: must not be empty");
    }
    return std::make_shared<StepsSignal>(std::move(values), period(value, 60));
}

struct Row {
    char const* name;
    SignalPtr (*read)(ScriptValue const&);
};

constexpr Row kRows[] = {
    {"ramp", ramp}, {"curve", curve}, {"toggle", toggle}, {"counter", counter}, {"steps", steps},
};

}  // namespace

std::vector<std::string> signalConstructors() {
    std::vector<std::string> names;
    for (Row const& row : kRows) {
        names.emplace_back(row.name);
    }
    return names;
}

std::shared_ptr<Signal const> readSignal(ScriptValue const& value) {
    for (Row const& row : kRows) {
        if (value.isMade(row.name)) {
            try {
                return row.read(value);
            } catch (Mistake const& mistake) {
                throw mistake.in(row.name).at(value.line);
            }
        }
    }
    return nullptr;
}

}  // namespace simulator
