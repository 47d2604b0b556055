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

// How long it lasts: one request, some cycles, all cycles that the test has.
enum class Lifetime { Once, While, Ever };

// The longest cycle: a formula of its waits.
struct Bound {
    char const* text;
    long long (*milliseconds)(Sizes const& sizes);
};

struct Expectation {
    Report report;  // the worst of the cycles that are disturbed
    Bound const* longest;
};

// What a block is to do, stated by hand for all disturbances and paths of one row. The first cycle after a
// disturbance is good in all of them.
struct FaultRow {
    std::vector<Disturbance> disturbances;
    std::vector<Path> paths;
    Expectation once;
    Expectation forAWhile;
    Expectation forEver;
    std::vector<std::string> log;  // the lines that may be in the log, of which there is one at least

    Expectation const& Of(Lifetime lifetime) const {
        return lifetime == Lifetime::Once ? once : lifetime == Lifetime::While ? forAWhile : forEver;
    }
};

// Milliseconds that the driver waits for a datagram, and those by which answers are delayed.
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

// The table as it stands in the document.
std::string FaultTableText();

}  // namespace test
