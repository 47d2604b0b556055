// The words of the table.

#include <algorithm>

#include "FaultTable.h"

namespace test {

namespace {

using simulator::FaultKind;

struct DisturbanceRow {
    Disturbance disturbance;
    FaultKind kind;
    char const* name;
    long long delay = 0;
    std::optional<std::uint32_t> code = {};
};

// In the order of Disturbance.
DisturbanceRow const DisturbanceRows[] = {
    {Disturbance::Silence, FaultKind::Silence, "no answer"},
    {Disturbance::Loss, FaultKind::Loss, "answer lost"},
    {Disturbance::ShortDelay, FaultKind::Delay, "answer late by d, d below T", ShortDelay},
    {Disturbance::LongDelay, FaultKind::Delay, "answer late by 1.5·T", LongDelay},
    {Disturbance::Duplicate, FaultKind::Duplicate, "every datagram twice"},
    {Disturbance::OtherInvokeId, FaultKind::OtherInvokeId, "other invoke id"},
    {Disturbance::PreviousAnswer, FaultKind::PreviousAnswer, "answer to the request before"},
    {Disturbance::OtherAddress, FaultKind::OtherAddress, "answer from another address"},
    {Disturbance::Truncate, FaultKind::Truncate, "answer cut short"},
    {Disturbance::BvlcFunction, FaultKind::BvlcFunction, "wrong BVLC function"},
    {Disturbance::BvlcType, FaultKind::BvlcType, "wrong BVLC type"},
    {Disturbance::BvlcLength, FaultKind::BvlcLength, "wrong BVLC length"},
    {Disturbance::NetworkMessage, FaultKind::NetworkMessage, "network-layer message"},
    {Disturbance::Error, FaultKind::Error, "Error"},
    {Disturbance::Reject, FaultKind::Reject, "Reject"},
    {Disturbance::Abort, FaultKind::Abort, "Abort"},
    {Disturbance::WrongObject, FaultKind::WrongObject, "wrong object"},
    {Disturbance::KnownProperty, FaultKind::UnaskedProperty, "property that was not asked for"},
    {Disturbance::UnknownProperty, FaultKind::UnaskedProperty, "property that the driver does not know", 0,
     9999},
    {Disturbance::OddList, FaultKind::OddList, "list without its last value"},
    {Disturbance::LostSegment, FaultKind::LostSegment, "segment left out"},
    {Disturbance::SegmentsOutOfOrder, FaultKind::SegmentsOutOfOrder, "segments out of order"},
    {Disturbance::RepeatedSegment, FaultKind::RepeatedSegment, "segment repeated"},
    {Disturbance::SegmentsAtOnce, FaultKind::SegmentsAtOnce, "all segments at once"},
    {Disturbance::EndlessSegments, FaultKind::EndlessSegments, "segments without end"},
    {Disturbance::OversizedSegments, FaultKind::OversizedSegments, "longer APDUs than negotiated"},
    {Disturbance::Garbage, FaultKind::Garbage, "garbage"},
    {Disturbance::HeadersOnly, FaultKind::HeadersOnly, "nothing but headers"},
};
static_assert(std::size(DisturbanceRows) == static_cast<std::size_t>(Disturbance::Count));

constexpr char const* PathNames[] = {"read", "segmented read", "routed read", "write"};
constexpr char const* ReportNames[] = {"good", "old values", "wrong values", "fault", "unclear"};

DisturbanceRow const& RowOf(Disturbance disturbance) {
    return DisturbanceRows[static_cast<std::size_t>(disturbance)];
}

template <class Entry>
std::string ListOf(std::vector<Entry> const& entries, std::string (*text)(Entry const&)) {
    std::string list;
    for (Entry const& entry : entries) {
        list += (list.empty() ? "" : ", ") + text(entry);
    }
    return list;
}

std::string TextOf(Expectation const& expectation) {
    return std::string(ReportNames[static_cast<std::size_t>(expectation.report)]) + "; " +
           expectation.longest->text;
}

std::string LogText(std::string const& line) {
    return "`" + line.substr(0, line.find('\n')) + "`";
}

// Equal outcomes are stated once.
std::string LastingOf(FaultRow const& row) {
    std::string const forAWhile = TextOf(row.forAWhile);
    std::string const forEver = TextOf(row.forEver);
    return forAWhile == forEver ? forAWhile : forAWhile + ", for ever: " + forEver;
}

std::string TextOf(FaultRow const& row) {
    return "| " +
           ListOf<Disturbance>(row.disturbances,
                               [](Disturbance const& entry) -> std::string { return NameOf(entry); }) +
           " | " + TextOf(row.once) + " | " + LastingOf(row) + " | " + ListOf<std::string>(row.log, LogText) +
           " |\n";
}

// The paths with a part in the document. Routed reads are in the part of plain ones.
struct Part {
    Path path;
    char const* title;
};

constexpr Part Parts[] = {
    {Path::Plain, "Reads whose answer is not segmented, also through a router"},
    {Path::Segmented, "Reads whose answer is segmented"},
    {Path::Write, "Writes, after a read that goes well"},
};

}  // namespace

char const* NameOf(Disturbance disturbance) {
    return RowOf(disturbance).name;
}

char const* NameOf(Path path) {
    return PathNames[static_cast<std::size_t>(path)];
}

simulator::Fault FaultOf(Disturbance disturbance, Path path) {
    DisturbanceRow const& row = RowOf(disturbance);
    simulator::Fault fault = simulator::MakeFault(row.kind);
    fault.chance = 1;
    fault.delay = std::chrono::milliseconds(row.delay);
    fault.code = row.code;
    fault.on = path == Path::Write ? simulator::FaultScope::Write : simulator::FaultScope::Read;
    return fault;
}

std::string FaultTableText() {
    std::string text;
    for (Part const& part : Parts) {
        text += std::string("\n### ") + part.title + "\n\n" +
                "| What goes wrong | Once | For a while, for ever | In the log |\n" + "|---|---|---|---|\n";
        for (FaultRow const& row : FaultTable()) {
            if (std::find(row.paths.begin(), row.paths.end(), part.path) != row.paths.end()) {
                text += TextOf(row);
            }
        }
    }
    return text + "\n";
}

}  // namespace test
