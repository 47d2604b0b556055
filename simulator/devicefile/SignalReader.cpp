#include "SignalReader.h"

#include <cmath>

#include "Mistake.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

using SignalPtr = std::shared_ptr<Signal const>;

constexpr double Day = 86400;
constexpr double Largest = 1e15;

// A number within the limits of exact arithmetic; `fallback` if the field is missing.
double Number(ScriptValue const& value, char const* name, double fallback) try {
    ScriptValue const& field = value[name];
    double const found = field.IsNil() ? fallback : checks::Number(field);
    if (!(std::fabs(found) <= Largest)) {
        throw Mistake("is too large");
    }
    return found;
} catch (Mistake const& mistake) {
    throw mistake.In(name);
}

double Period(ScriptValue const& value, double fallback) {
    double const found = Number(value, "period", fallback);
    if (found < 0.001) {
        throw Mistake("period: must be above 0");
    }
    return found;
}

SignalPtr Ramp(ScriptValue const& value) {
    checks::Fields(value, {"from", "to", "period"});
    return std::make_shared<RampSignal>(Number(value, "from", 0), Number(value, "to", 100),
                                        Period(value, 60));
}

SignalPtr Curve(ScriptValue const& value) {
    checks::Fields(value, {"mean", "amplitude", "period", "peak"});
    double const length = Period(value, Day);
    return std::make_shared<CurveSignal>(Number(value, "mean", 0), Number(value, "amplitude", 1), length,
                                         Number(value, "peak", length / 2));
}

SignalPtr Toggle(ScriptValue const& value) {
    checks::Fields(value, {"period"});
    return std::make_shared<ToggleSignal>(Period(value, 60));
}

SignalPtr Counter(ScriptValue const& value) {
    checks::Fields(value, {"start", "rate"});
    return std::make_shared<CounterSignal>(Number(value, "start", 0), Number(value, "rate", 1));
}

SignalPtr Steps(ScriptValue const& value) {
    checks::Fields(value, {"values", "period"});
    std::vector<double> values;
    for (ScriptValue const& step : checks::List(value["values"])) {
        values.push_back(checks::Number(step));
        if (!(std::fabs(values.back()) <= Largest)) {
            throw Mistake("values: a number is too large");
        }
    }
    if (values.empty()) {
        throw Mistake("values: must not be empty");
    }
    return std::make_shared<StepsSignal>(std::move(values), Period(value, 60));
}

struct Row {
    char const* name;
    SignalPtr (*read)(ScriptValue const&);
};

constexpr Row Rows[] = {
    {"ramp", Ramp}, {"curve", Curve}, {"toggle", Toggle}, {"counter", Counter}, {"steps", Steps},
};

}  // namespace

std::vector<std::string> SignalConstructors() {
    std::vector<std::string> names;
    for (Row const& row : Rows) {
        names.emplace_back(row.name);
    }
    return names;
}

std::shared_ptr<Signal const> ReadSignal(ScriptValue const& value) {
    for (Row const& row : Rows) {
        if (value.IsMade(row.name)) {
            try {
                return row.read(value);
            } catch (Mistake const& mistake) {
                throw mistake.In(row.name).At(value.line);
            }
        }
    }
    return nullptr;
}

}  // namespace simulator
