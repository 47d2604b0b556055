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
constexpr Bound NRST{"N·R·(S+1)·T",
                     [](Sizes const& s) { return s.objects * s.attempts * (s.segments + 1) * Wait; }};
constexpr Bound Endless{"no end, then R·T", [](Sizes const& s) { return s.attempts * Wait; }};

constexpr Report Good = Report::Good;
constexpr Report Old = Report::Old;
constexpr Report Fault = Report::Fault;
constexpr Recovery Next = Recovery::Next;
constexpr Recovery Second = Recovery::Second;
constexpr Recovery Behind = Recovery::Behind;

constexpr char badCast[] = "0-1 std::bad_cast\n";
constexpr char sizeError[] = "message size error";
constexpr char formatError[] = "packet format error";
constexpr char gap[] = "Error: not all segments recieved";

std::vector<FaultRow> ReadRows() {
    using E = Disturbance;
    std::vector<Path> const whole{Path::Plain, Path::Routed};
    return {
        {{E::OtherAddress, E::WrongObject, E::KnownProperty, E::LostSegment, E::SegmentsOutOfOrder,
          E::RepeatedSegment, E::OversizedSegments},
         whole,
         {Good, &Zero, Next},
         {Good, &Zero, Next},
         {Good, &Zero, Next},
         {}},
        {{E::UnknownProperty}, whole, {Old, &Zero, Next}, {Old, &Zero, Next}, {Old, &Zero, Next}, {}},
        {{E::ShortDelay}, whole, {Good, &D, Next}, {Good, &ND, Next}, {Good, &ND, Next}, {}},
        {{E::Silence, E::Loss}, whole, {Good, &T, Next}, {Fault, &RT, Next}, {Fault, &RT, Next}, {}},
        {{E::OtherInvokeId, E::PreviousAnswer, E::Truncate, E::BvlcFunction, E::BvlcType, E::BvlcLength,
          E::NetworkMessage, E::OddList, E::Garbage, E::HeadersOnly},
         whole,
         {Good, &Zero, Next},
         {Fault, &Zero, Next},
         {Fault, &Zero, Next},
         {}},
        {{E::Error, E::Reject, E::Abort},
         whole,
         {Good, &Zero, Next},
         {Fault, &Zero, Next},
         {Fault, &Zero, Next},
         {badCast}},
        {{E::LongDelay}, whole, {Good, &T, Behind}, {Fault, &RT, Behind}, {Fault, &RT, Behind}, {}},
        {{E::Duplicate}, whole, {Fault, &Zero, Behind}, {Fault, &Zero, Behind}, {Fault, &Zero, Behind}, {}},
        {{E::EndlessSegments},
         {Path::Plain, Path::Segmented, Path::Routed},
         {Fault, &Endless, Next},
         {Fault, &Endless, Next},
         {Fault, &Endless, Next},
         {}},
    };
}

std::vector<FaultRow> SegmentedRows() {
    using E = Disturbance;
    std::vector<Path> const segmented{Path::Segmented};
    return {
        {{E::OtherAddress, E::WrongObject, E::KnownProperty, E::Duplicate, E::RepeatedSegment,
          E::OversizedSegments},
         segmented,
         {Good, &NT, Next},
         {Good, &NT, Next},
         {Good, &NT, Next},
         {}},
        {{E::UnknownProperty}, segmented, {Old, &NT, Next}, {Old, &NT, Next}, {Old, &NT, Next}, {}},
        {{E::ShortDelay}, segmented, {Good, &NTSD, Next}, {Good, &NTNSD, Next}, {Good, &NTNSD, Next}, {}},
        {{E::Silence, E::Loss, E::PreviousAnswer, E::OddList},
         segmented,
         {Good, &N1T, Next},
         {Fault, &RT, Next},
         {Fault, &RT, Next},
         {}},
        {{E::Truncate, E::BvlcFunction, E::BvlcType, E::BvlcLength, E::Garbage, E::HeadersOnly},
         segmented,
         {Good, &N1T, Next},
         {Fault, &Zero, Second},
         {Fault, &Zero, Second},
         {}},
        {{E::NetworkMessage}, segmented, {Good, &NT, Next}, {Fault, &Zero, Next}, {Fault, &Zero, Next}, {}},
        {{E::Error, E::Reject, E::Abort},
         segmented,
         {Good, &NT, Next},
         {Fault, &Zero, Next},
         {Fault, &Zero, Next},
         {badCast}},
        {{E::OtherInvokeId}, segmented, {Fault, &T, Next}, {Fault, &T, Next}, {Fault, &T, Next}, {}},
        {{E::LostSegment, E::SegmentsOutOfOrder},
         segmented,
         {Fault, &T, Next},
         {Fault, &T, Next},
         {Fault, &T, Next},
         {gap}},
        {{E::LongDelay}, segmented, {Good, &NRST, Next}, {Fault, &NRST, Next}, {Fault, &NRST, Next}, {gap}},
    };
}

std::vector<FaultRow> WriteRows() {
    using E = Disturbance;
    std::vector<Path> const write{Path::Write};
    auto const same = [](Expectation const& expectation, std::vector<Disturbance> disturbances,
                         std::vector<std::string> log) {
        return FaultRow{std::move(disturbances), {Path::Write}, expectation, expectation, expectation,
                        std::move(log)};
    };
    return {
        same({Good, &T, Next},
             {E::OtherAddress, E::Duplicate, E::OtherInvokeId, E::PreviousAnswer, E::Abort, E::WrongObject,
              E::KnownProperty, E::UnknownProperty, E::OddList, E::LostSegment, E::SegmentsOutOfOrder,
              E::RepeatedSegment, E::EndlessSegments, E::OversizedSegments},
             {}),
        same({Good, &TD, Next}, {E::ShortDelay}, {}),
        same({Good, &T, Next}, {E::Silence, E::Loss}, {sizeError}),
        same({Good, &Zero, Next}, {E::Truncate, E::NetworkMessage, E::HeadersOnly}, {sizeError}),
        same({Good, &Zero, Next}, {E::BvlcFunction, E::BvlcType}, {formatError}),
        same({Good, &Zero, Next}, {E::BvlcLength}, {"packet size error"}),
        same({Good, &Zero, Next}, {E::Garbage}, {formatError, sizeError}),
        same({Good, &Zero, Next}, {E::Error}, {"Error! Error packet. Class: Object Code: UnknownObject"}),
        same({Good, &Zero, Next}, {E::Reject},
             {"Error! The packet was rejected. Reason: UnrecognizedService"}),
        {{E::LongDelay},
         write,
         {Good, &T, Behind},
         {Fault, &T, Behind},
         {Fault, &T, Behind},
         {sizeError, "1-1 std::bad_cast\n"}},
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
