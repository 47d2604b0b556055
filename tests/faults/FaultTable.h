#pragma once

#include <string>
#include <vector>

#include "Fault.h"
#include "Plant.h"

namespace test {

// How a device is disturbed: a fault of the simulator with its parameters.
enum class Disturbance {
    Silence,
    Loss,
    ShortDelay,
    LongDelay,
    Duplicate,
    OtherInvokeId,
    PreviousAnswer,
    OtherAddress,
    Truncate,
    BvlcFunction,
    BvlcType,
    BvlcLength,
    NetworkMessage,
    Error,
    Reject,
    Abort,
    WrongObject,
    KnownProperty,
    UnknownProperty,
    OddList,
    LostSegment,
    SegmentsOutOfOrder,
    RepeatedSegment,
    SegmentsAtOnce,
    EndlessSegments,
    OversizedSegments,
    Garbage,
    HeadersOnly,
    Count
};

// How long it lasts: one request, some cycles, all cycles of the test.
enum class Lifetime { Once, While, Ever };

// The duration of the longest cycle, as a formula of its waits.
struct Bound {
    char const* text;
    long long (*milliseconds)(Sizes const& sizes);
};

struct Expectation {
    Report report;  // the worst one of the disturbed cycles
    Bound const* longest;
};

// The expected behaviour of a block for all disturbances and paths of one row, written by hand. In every row
// the first cycle after a disturbance is good.
struct FaultRow {
    std::vector<Disturbance> disturbances;
    std::vector<Path> paths;
    Expectation once;
    Expectation forAWhile;
    Expectation forEver;
    std::vector<std::string> log;  // the lines that may be in the log, at least one of which is

    Expectation const& Of(Lifetime lifetime) const {
        return lifetime == Lifetime::Once ? once : lifetime == Lifetime::While ? forAWhile : forEver;
    }
};

// Milliseconds for which the driver waits for a datagram, and by which answers are delayed.
constexpr long long Wait = 1000;
constexpr long long ShortDelay = 300;
constexpr long long LongDelay = 1500;

std::vector<FaultRow> const& FaultTable();
// The row of a cell; throws std::logic_error unless there is exactly one.
FaultRow const& RowOf(Disturbance disturbance, Path path);

char const* NameOf(Disturbance disturbance);
char const* NameOf(Path path);
// The fault of the simulator, without a lifetime.
simulator::Fault FaultOf(Disturbance disturbance, Path path);

// The table as it is in the document.
std::string FaultTableText();

}  // namespace test
