#include "FaultTable.h"

#include <algorithm>
#include <stdexcept>

namespace test {

namespace {

// T is Wait, d the delay of an answer; R, N and S are the sizes.
constexpr Bound Zero{"at once", [](Sizes const&) { return 0LL; }};
constexpr Bound T{"T", [](Sizes const&) { return Wait; }};
constexpr Bound RT{"R·T", [](Sizes const& s) { return s.attempts * Wait; }};
constexpr Bound NT{"N·T", [](Sizes const& s) { return s.objects * Wait; }};
constexpr Bound N1T{"(N+1)·T", [](Sizes const& s) { return (s.objects + 1) * Wait; }};
constexpr Bound D{"d", [](Sizes const&) { return ShortDelay; }};
constexpr Bound ND{"N·d", [](Sizes const& s) { return s.objects * ShortDelay; }};
constexpr Bound TD{"T+d", [](Sizes const&) { return Wait + ShortDelay; }};
constexpr Bound NTSD{"N·T+S·d", [](Sizes const& s) { return s.objects * Wait + s.segments * ShortDelay; }};
constexpr Bound NTNSD{"N·(T+S·d)",
                      [](Sizes const& s) { return s.objects * (Wait + s.segments * ShortDelay); }};
constexpr Bound Endless{"no end, then R·T", [](Sizes const& s) { return s.attempts * Wait; }};

constexpr Report Good = Report::Good;
constexpr Report Old = Report::Old;
constexpr Report Fault = Report::Fault;

constexpr char BadCast[] = "0-1 std::bad_cast\n";
constexpr char SizeError[] = "message size error";
constexpr char FormatError[] = "packet format error";
constexpr char Gap[] = "Error: not all segments recieved";

std::vector<FaultRow> ReadRows() {
    using E = Disturbance;
    std::vector<Path> const whole{Path::Plain, Path::Routed};
    return {
        {{E::OtherAddress, E::WrongObject, E::KnownProperty, E::LostSegment, E::SegmentsOutOfOrder,
          E::RepeatedSegment, E::SegmentsAtOnce, E::OversizedSegments},
         whole,
         {Good, &Zero},
         {Good, &Zero},
         {Good, &Zero},
         {}},
        {{E::UnknownProperty}, whole, {Old, &Zero}, {Old, &Zero}, {Old, &Zero}, {}},
        {{E::ShortDelay}, whole, {Good, &D}, {Good, &ND}, {Good, &ND}, {}},
        {{E::Silence, E::Loss, E::LongDelay}, whole, {Good, &T}, {Fault, &RT}, {Fault, &RT}, {}},
        {{E::OtherInvokeId, E::PreviousAnswer, E::Truncate, E::BvlcFunction, E::BvlcType, E::BvlcLength,
          E::NetworkMessage, E::OddList, E::Garbage, E::HeadersOnly},
         whole,
         {Good, &Zero},
         {Fault, &Zero},
         {Fault, &Zero},
         {}},
        {{E::Error, E::Reject, E::Abort}, whole, {Good, &Zero}, {Fault, &Zero}, {Fault, &Zero}, {BadCast}},
        {{E::Duplicate}, whole, {Fault, &Zero}, {Fault, &Zero}, {Fault, &Zero}, {}},
        {{E::EndlessSegments},
         {Path::Plain, Path::Segmented, Path::Routed},
         {Fault, &Endless},
         {Fault, &Endless},
         {Fault, &Endless},
         {}},
    };
}

std::vector<FaultRow> SegmentedRows() {
    using E = Disturbance;
    std::vector<Path> const segmented{Path::Segmented};
    return {
        {{E::OtherAddress, E::WrongObject, E::KnownProperty, E::Duplicate, E::RepeatedSegment,
          E::SegmentsAtOnce, E::OversizedSegments},
         segmented,
         {Good, &NT},
         {Good, &NT},
         {Good, &NT},
         {}},
        {{E::UnknownProperty}, segmented, {Old, &NT}, {Old, &NT}, {Old, &NT}, {}},
        {{E::ShortDelay}, segmented, {Good, &NTSD}, {Good, &NTNSD}, {Good, &NTNSD}, {}},
        {{E::Silence, E::Loss, E::LongDelay, E::PreviousAnswer, E::OddList},
         segmented,
         {Good, &N1T},
         {Fault, &RT},
         {Fault, &RT},
         {}},
        {{E::Truncate, E::BvlcFunction, E::BvlcType, E::BvlcLength, E::NetworkMessage, E::Garbage,
          E::HeadersOnly},
         segmented,
         {Good, &NT},
         {Fault, &Zero},
         {Fault, &Zero},
         {}},
        {{E::Error, E::Reject, E::Abort}, segmented, {Good, &NT}, {Fault, &Zero}, {Fault, &Zero}, {BadCast}},
        {{E::OtherInvokeId}, segmented, {Fault, &T}, {Fault, &T}, {Fault, &T}, {}},
        {{E::LostSegment, E::SegmentsOutOfOrder}, segmented, {Fault, &T}, {Fault, &T}, {Fault, &T}, {Gap}},
    };
}

std::vector<FaultRow> WriteRows() {
    using E = Disturbance;
    auto const same = [](Expectation const& expectation, std::vector<Disturbance> disturbances,
                         std::vector<std::string> log) {
        return FaultRow{std::move(disturbances), {Path::Write}, expectation, expectation, expectation,
                        std::move(log)};
    };
    return {
        same({Good, &T},
             {E::OtherAddress, E::Duplicate, E::OtherInvokeId, E::PreviousAnswer, E::Abort, E::WrongObject,
              E::KnownProperty, E::UnknownProperty, E::OddList, E::LostSegment, E::SegmentsOutOfOrder,
              E::RepeatedSegment, E::SegmentsAtOnce, E::EndlessSegments, E::OversizedSegments},
             {}),
        same({Good, &TD}, {E::ShortDelay}, {}),
        same({Good, &T}, {E::Silence, E::Loss, E::LongDelay}, {SizeError}),
        same({Good, &Zero}, {E::Truncate, E::NetworkMessage, E::HeadersOnly}, {SizeError}),
        same({Good, &Zero}, {E::BvlcFunction, E::BvlcType}, {FormatError}),
        same({Good, &Zero}, {E::BvlcLength}, {"packet size error"}),
        same({Good, &Zero}, {E::Garbage}, {FormatError, SizeError}),
        same({Good, &Zero}, {E::Error}, {"Error! Error packet. Class: Object Code: UnknownObject"}),
        same({Good, &Zero}, {E::Reject}, {"Error! The packet was rejected. Reason: UnrecognizedService"}),
    };
}

std::vector<FaultRow> MakeTable() {
    std::vector<FaultRow> table = ReadRows();
    for (auto const& more : {SegmentedRows(), WriteRows()}) {
        table.insert(table.end(), more.begin(), more.end());
    }
    return table;
}

template <class Entry>
bool Holds(std::vector<Entry> const& list, Entry entry) {
    return std::find(list.begin(), list.end(), entry) != list.end();
}

}  // namespace

std::vector<FaultRow> const& FaultTable() {
    static std::vector<FaultRow> const table = MakeTable();
    return table;
}

FaultRow const& RowOf(Disturbance disturbance, Path path) {
    FaultRow const* found = nullptr;
    for (FaultRow const& row : FaultTable()) {
        if (Holds(row.disturbances, disturbance) && Holds(row.paths, path)) {
            if (found) {
                throw std::logic_error(std::string("two rows for ") + NameOf(disturbance));
            }
            found = &row;
        }
    }
    if (!found) {
        throw std::logic_error(std::string("no row for ") + NameOf(disturbance) + ", " + NameOf(path));
    }
    return *found;
}

}  // namespace test
