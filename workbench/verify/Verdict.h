#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace workbench {

// The result for one point: what a comparison of the driver's value with the device's own answer gives.
enum class Verdict {
    Agrees,
    Moving,
    Differs,
    LosesInformation,
    NoValue,
    NotDecoded,
    NoSuchObject,
    NoSuchProperty,
    DeviceError,
    DeviceRejects,
    DeviceAborts,
    UnreadableAnswer,
    Late,
    DeviceSilent,
    NotVerified
};

struct VerdictRow {
    Verdict verdict;
    char const* name;     // as shown, and in JSON
    bool isFinding;       // counts for exit code 1
    char const* meaning;  // one sentence
};

// In the order of Verdict.
std::vector<VerdictRow> const& Verdicts();
VerdictRow const& RowOf(Verdict verdict);

// What else is worth knowing of a point. A remark is not a finding.
enum class Remark { InAlarm, Fault, Overridden, NotInService, HundredthsAsTenths, LocalTime };

struct RemarkRow {
    Remark remark;
    char const* name;
    char const* meaning;
};

// In the order of Remark.
std::vector<RemarkRow> const& Remarks();
RemarkRow const& RowOf(Remark remark);

// The remarks of a Status_Flags value, given as its bits in the order of the standard (clause 12): "0100".
std::vector<Remark> RemarksOfFlags(std::string const& bits);

}  // namespace workbench
