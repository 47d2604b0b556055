#pragma once

#include <string>
#include <vector>

namespace workbench {

// Why a block is in the state that it is in, as the datagrams show it. In the order in which a block's causes
// are listed.
enum class CauseKind {
    EndlessSegments,
    Silent,
    Late,
    OtherStation,
    Error,
    Reject,
    Abort,
    BadFrame,
    NetworkMessage,
    BadAnswer,
    OtherInvokeId,
    EarlierAnswer,
    Duplicate,
    MissingSegment,
    SegmentOrder,
    RepeatedSegment,
    LongAnswer,
    OtherObject,
    UnaskedProperty,
    MissingProperty,
    PropertyError,
    NotTaken
};

struct Cause {
    CauseKind kind;
    std::string object;            // "analog-input 1"; empty where the cause concerns the whole device
    std::string text;              // for people, on one line, with the object: "analog-input 1: ..."
    unsigned long long count = 1;  // how often in the latest cycle
    long long since = 0;           // a file time: since when each cycle has had it
    bool isDated = false;          // since is known by itself, whatever the cycles before had
};

// For programs: "silent", "late", ...
char const* CauseName(CauseKind kind);

// All texts, with "; " between them. Empty without a cause.
std::string WhyText(std::vector<Cause> const& causes);

}  // namespace workbench
