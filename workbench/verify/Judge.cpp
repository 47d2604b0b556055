#include "Judge.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "DriverDecoding.h"
#include "Printable.h"
#include "QualityText.h"
#include "ValueText.h"

namespace workbench {

namespace {

// The error codes of ASHRAE 135, clause 18, that say that something does not exist.
constexpr std::uint32_t UnknownObject = 31;
constexpr std::uint32_t UnknownProperty = 32;

constexpr std::size_t LongestValue = 80;  // octets of a value in an explanation

std::string Short(std::string const& value) {
    return tools::Printable(value, LongestValue);
}

bool HasValue(DriverReading const& driver) {
    return driver.state.Value.GetType() != OpcUaType_Null;
}

_OpcUa_BuiltInType DeclaredType(PointFacts const& point) {
    return point.declared.Type == OpcUaType_DataValue ? point.declared.ElementType : point.declared.Type;
}

// What the driver makes of an answer that has no value.
std::string Effect(PointFacts const& point, DriverReading const& driver, ReadProblem const& problem) {
    if (HasValue(driver)) {
        return "; the driver shows " + Short(ValueText(driver.state.Value, point.localDiff)) +
               " with quality " + QualityText(driver.state.Status) +
               (problem.kind == ReadProblem::Kind::Error ? ", which is not a value of the device" : "");
    }
    if (driver.fault && driver.pollEndedAt == point.object) {
        return "; the driver's poll of the whole block fails on it";
    }
    return {};
}

Verdict VerdictOf(ReadProblem const& problem) {
    switch (problem.kind) {
        case ReadProblem::Kind::Error:
            return problem.errorCode == UnknownObject     ? Verdict::NoSuchObject
                   : problem.errorCode == UnknownProperty ? Verdict::NoSuchProperty
                                                          : Verdict::DeviceError;
        case ReadProblem::Kind::Reject:
            return Verdict::DeviceRejects;
        case ReadProblem::Kind::Abort:
            return Verdict::DeviceAborts;
        case ReadProblem::Kind::Malformed:
            return Verdict::UnreadableAnswer;
        default:
            return Verdict::DeviceSilent;
    }
}

std::string LateText(std::chrono::milliseconds time) {
    return "answers after " + SecondsText(time) + "; the driver waits " + SecondsText(DriverTimeout) +
           " for each attempt";
}

Judgement JudgeProblem(PointFacts const& point, DriverReading const& driver, DeviceReading const& reading) {
    ReadProblem const problem = reading.problem.value_or(ReadProblem{});
    if (problem.kind == ReadProblem::Kind::Silent && reading.elapsed > DriverTimeout) {
        return {Verdict::Late, LateText(reading.elapsed)};
    }
    return {VerdictOf(problem), problem.text + Effect(point, driver, problem)};
}

std::string FaultCause(DriverReading const& driver) {
    return driver.pollEndedAt.empty()
               ? driver.faultText
               : driver.faultText + ": the poll of the block ended at " + driver.pollEndedAt;
}

Judgement JudgeNoValue(PointFacts const& point, DriverReading const& driver, DeviceReading const& before,
                       DeviceReading const& after) {
    std::chrono::milliseconds const slowest = std::max(before.elapsed, after.elapsed);
    if (driver.fault && slowest > DriverTimeout) {
        return {Verdict::Late, LateText(slowest)};
    }
    if (driver.fault) {
        return {Verdict::NoValue, FaultCause(driver)};
    }
    if (!point.readBefore.empty()) {
        return {Verdict::NoValue, "the variable \"" + point.readBefore +
                                      "\" reads the same property, and only the first of them gets a value"};
    }
    FaithfulValue const expected = Faithful(*after.value, *point.type, DeclaredType(point), point.localDiff);
    return {Verdict::NoValue,
            expected.value ? "the driver's poll has no fault and delivered no value" : expected.loss};
}

std::optional<double> NumberOf(OpcUa_VariantHlp const& value) {
    if (value.GetType() == OpcUaType_DateTime) {
        return static_cast<double>(value.Value.DateTime);
    }
    double number = 0;
    return value.GetDouble(number) == OpcUa_Good && std::isfinite(number) ? std::optional(number)
                                                                          : std::nullopt;
}

// Whether a value that was read between two others can be one that the device had in between. A value that
// turned round or began again in that time may lie outside of both by as much as they differ.
bool Fits(OpcUa_VariantHlp const& value, OpcUa_VariantHlp const& before, OpcUa_VariantHlp const& after) {
    std::optional<double> const number = NumberOf(value);
    std::optional<double> const first = NumberOf(before);
    std::optional<double> const last = NumberOf(after);
    if (!number || !first || !last) {
        return false;
    }
    double const change = std::fabs(*last - *first);
    return *number >= std::min(*first, *last) - change && *number <= std::max(*first, *last) + change;
}

// The comparison of one point that has a value on both sides.
class Comparison {
public:
    Comparison(PointFacts const& comparedPoint, OpcUa_VariantHlp const& driverValue,
               DeviceValue const& valueBefore, DeviceValue const& valueAfter)
        : point(comparedPoint),
          driver(driverValue),
          before(valueBefore),
          after(valueAfter),
          isMoving(valueBefore != valueAfter),
          first(Expect(valueBefore)),
          last(Expect(valueAfter)) {}

    Judgement Result() const {
        if (IsKept(first) || IsKept(last)) {
            return isMoving ? Judgement{Verdict::Moving, Change()} : Judgement{Verdict::Agrees, {}};
        }
        bool const fits = isMoving && first.value && last.value && Fits(driver, *first.value, *last.value);
        if (fits && first.loss.empty() && last.loss.empty()) {
            return {Verdict::Moving, Change()};
        }
        std::string const loss = Loss(fits);
        if (loss.empty()) {
            return {Verdict::Differs, Both()};
        }
        // The text of a schedule is the same on both sides, and long.
        return {Verdict::LosesInformation, after.kind == DeviceKind::Schedule ? loss : Both() + ": " + loss};
    }

private:
    FaithfulValue Expect(DeviceValue const& value) const {
        return Faithful(value, *point.type, DeclaredType(point), point.localDiff);
    }

    bool IsValue(FaithfulValue const& expected) const { return expected.value && driver == *expected.value; }
    bool IsKept(FaithfulValue const& expected) const { return IsValue(expected) && expected.loss.empty(); }

    // Why the driver's value is another one than the device's; empty if no loss explains it.
    std::string Loss(bool fits) const {
        if (IsValue(last) || (fits && !last.loss.empty())) {
            return last.loss;
        }
        if (IsValue(first) || fits) {
            return first.loss;
        }
        if (HasUnspecified(after)) {
            return last.loss;
        }
        std::string const set = CharacterSetLoss(after, driver);
        if (!set.empty()) {
            return set;
        }
        return IsDecoded() ? DecodingLoss(after, *point.type) : std::string();
    }

    bool IsDecoded() const {
        auto const firsts = Decoded(before, *point.type, DeclaredType(point));
        auto const lasts = Decoded(after, *point.type, DeclaredType(point));
        auto const contains = [this](std::vector<OpcUa_VariantHlp> const& values) {
            return std::find(values.begin(), values.end(), driver) != values.end();
        };
        if (contains(firsts) || contains(lasts)) {
            return true;
        }
        for (std::size_t i = 0; isMoving && i < std::min(firsts.size(), lasts.size()); ++i) {
            if (Fits(driver, firsts[i], lasts[i])) {
                return true;
            }
        }
        return false;
    }

    std::string Change() const { return Short(before.shown) + " before, " + Short(after.shown) + " after"; }

    std::string Both() const {
        return "the driver has " + Short(ValueText(driver, point.localDiff)) + ", the device " +
               (isMoving ? Change() : Short(after.shown));
    }

    PointFacts const& point;
    OpcUa_VariantHlp const& driver;
    DeviceValue const& before;
    DeviceValue const& after;
    bool isMoving;
    FaithfulValue first;
    FaithfulValue last;
};

}  // namespace

Judgement Judge(PointFacts const& point, DriverReading const& driver, DeviceReading const& before,
                DeviceReading const& after) {
    if (!before.value && !after.value) {
        // An answer says more than silence.
        DeviceReading const& said =
            after.problem && after.problem->kind != ReadProblem::Kind::Silent ? after : before;
        return JudgeProblem(point, driver, said);
    }
    if (!point.undecodable.empty()) {
        return {Verdict::NotDecoded,
                point.undecodable + ": no variable of " + point.object + " gets a value"};
    }
    DeviceReading const& first = before.value ? before : after;
    DeviceReading const& last = after.value ? after : before;
    if (!HasValue(driver) || driver.fault) {
        return JudgeNoValue(point, driver, first, last);
    }
    return Comparison(point, driver.state.Value, *first.value, *last.value).Result();
}

std::string SecondsText(std::chrono::milliseconds time) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", static_cast<double>(time.count()) / 1000);
    return text;
}

}  // namespace workbench
