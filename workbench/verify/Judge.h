#pragma once

#include <optional>
#include <string>

#include "DeviceValue.h"
#include "Project.h"
#include "PropertyTypeEnum.h"
#include "Verdict.h"
#include "dorvelshare/VariableStore.h"

namespace workbench {

// What is known of a point before any value is read.
struct PointFacts {
    OpcUa_BuiltInTypeHlp declared;
    std::optional<PropertyTypeEnum> type;  // the driver's type of the property; none: it cannot decode it
    std::string
        undecodable;  // what of the same object the driver cannot decode, as "resolution of analog-input"
    std::string readBefore;   // the variable that reads the same property of the same object before this one
    std::string object;       // "analog-input 1"
    long long localDiff = 0;  // local time minus UTC, as in TimeText.h
};

// What the driver has after a cycle that began without a value.
struct DriverReading {
    VariableState state;  // null without a value
    bool fault = false;   // the poll of the block has failed
    std::string
        pollEndedAt;        // the object whose request was the last one of a failed poll, as "analog-input 1"
    std::string faultText;  // as reported by the driver, or why there was no poll
};

struct Judgement {
    Verdict verdict = Verdict::NotVerified;
    std::string explanation;  // one sentence without a full stop; empty where the verdict says it all
};

// The longest time that the driver waits for an answer.
constexpr std::chrono::milliseconds DriverTimeout{1000};

// Compares the driver's value with the device's answers before and after it. Total and without side effects.
Judgement Judge(PointFacts const& point, DriverReading const& driver, DeviceReading const& before,
                DeviceReading const& after);

// "1.31 s".
std::string SecondsText(std::chrono::milliseconds time);

}  // namespace workbench
