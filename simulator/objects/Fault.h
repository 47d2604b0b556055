#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ObjectId.h"
#include "Standard.h"

namespace simulator {

// The kinds of faults in answers. FaultRows describes each.
enum class FaultKind {
    Silence,
    Delay,
    Loss,
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
    UnaskedProperty,
    OddList,
    LostSegment,
    SegmentsOutOfOrder,
    RepeatedSegment,
    SegmentsAtOnce,
    EndlessSegments,
    OversizedSegments,
    Garbage,
    HeadersOnly,
    OtherInstance,
    WrongStation,
    ChangingObjectList
};

// The headers that HeadersOnly keeps: that of the link, those of link and network, or that of the APDU too.
enum class FaultHeaders { Bvlc, Npdu, Apdu };

// The requests to which a fault applies, by their service: Any is any confirmed request, WhoIs a Who-Is or a
// Who-Has.
enum class FaultScope { Any, Read, Write, WhoIs };

// A fault. A member that its kind does not have (FaultRow::parameters) has no effect.
struct Fault {
    FaultKind kind = FaultKind::Silence;

    // Parameters
    std::chrono::milliseconds delay{0};  // of the answer; MakeFault sets 2 s for Delay
    std::size_t octet = 8;               // the octets of the datagram that are sent
    bool mends = true;                   // the BVLC length is corrected after cutting; needs 4 octets
    std::optional<std::uint32_t> code;   // FaultRow::code by default
    std::uint32_t errorClass = 1;        // of an Error: object
    FaultHeaders headers = FaultHeaders::Npdu;
    std::size_t octets = 4;     // beyond the negotiated ones, or the most octets of a datagram of garbage
    std::uint32_t segment = 1;  // the number of the segment, from 0
    std::uint64_t count = 0;    // all segments of an endless answer; 0 for no end

    // Scope
    FaultScope on = FaultScope::Any;
    std::optional<ObjectId> object;  // only requests whose first object is this one

    // The fault applies to every n-th request in its scope, and to each of these with a chance. For Loss both
    // count datagrams instead of requests.
    double chance = 1;
    std::uint32_t every = 1;
    std::uint32_t seed = 1;

    // Lifetime: it begins after the time `after`, lasts for `duration`, and applies at most `times` times.
    // The time counts from the first call of the station after the fault was added.
    std::chrono::milliseconds after{0};
    std::optional<std::chrono::milliseconds> duration;
    std::optional<std::uint32_t> times;
};

// Parameters that only some kinds have, as bits.
enum FaultParameter : unsigned {
    NoParameter = 0,
    DelayParameter = 1,
    OctetParameter = 2,  // and mends
    CodeParameter = 4,
    ErrorClassParameter = 8,
    HeadersParameter = 16,
    OctetsParameter = 32,
    SegmentParameter = 64,
    CountParameter = 128
};

struct FaultRow {
    FaultKind kind;
    char const* name;  // in device files, commands and documents
    unsigned parameters;
    std::uint32_t code;         // the default code
    std::uint32_t highestCode;  // the largest code
    char const* text;           // the effect, for help
};

// In the order of FaultKind.
inline constexpr FaultRow FaultRows[] = {
    {FaultKind::Silence, "silence", NoParameter, 0, 0, "requests are neither served nor answered"},
    {FaultKind::Delay, "delay", DelayParameter, 0, 0, "the answer comes late"},
    {FaultKind::Loss, "loss", NoParameter, 0, 0, "datagrams of answers are lost, by default half of them"},
    {FaultKind::Duplicate, "duplicate", NoParameter, 0, 0, "each datagram is sent twice"},
    {FaultKind::OtherInvokeId, "other_invoke_id", CodeParameter, 1, 255, "the invoke id is higher by code"},
    {FaultKind::PreviousAnswer, "previous_answer", NoParameter, 0, 0, "the answer to the request before"},
    {FaultKind::OtherAddress, "other_address", NoParameter, 0, 0, "the answer is sent from elsewhere"},
    {FaultKind::Truncate, "truncate", OctetParameter, 0, 0, "of each datagram only so many octets are sent"},
    {FaultKind::BvlcFunction, "bvlc_function", CodeParameter, 0, 255, "the BVLC function is code"},
    {FaultKind::BvlcType, "bvlc_type", CodeParameter, 0x82, 255, "the BVLC type is code"},
    {FaultKind::BvlcLength, "bvlc_length", CodeParameter, 1, 65535, "the BVLC length is too large by code"},
    {FaultKind::NetworkMessage, "network_message", CodeParameter, 3, 255,
     "a network-layer message of type code"},
    {FaultKind::Error, "error", CodeParameter | ErrorClassParameter, 31, 65535, "an Error of class and code"},
    {FaultKind::Reject, "reject", CodeParameter, 9, 255, "a Reject with reason code"},
    {FaultKind::Abort, "abort", CodeParameter, 0, 255, "an Abort with reason code"},
    {FaultKind::WrongObject, "wrong_object", NoParameter, 0, 0, "the answer is of the next instance"},
    {FaultKind::UnaskedProperty, "unasked_property", CodeParameter, 77, 4194303,
     "also property code is answered"},
    {FaultKind::OddList, "odd_list", NoParameter, 0, 0, "the last property of a list has no result"},
    {FaultKind::LostSegment, "lost_segment", SegmentParameter, 0, 0, "a segment is left out"},
    {FaultKind::SegmentsOutOfOrder, "segments_out_of_order", SegmentParameter, 0, 0,
     "a segment and the next change places"},
    {FaultKind::RepeatedSegment, "repeated_segment", SegmentParameter, 0, 0, "a segment is sent twice"},
    {FaultKind::SegmentsAtOnce, "segments_at_once", NoParameter, 0, 0,
     "all segments are sent without waiting for a Segment-ACK"},
    {FaultKind::EndlessSegments, "endless_segments", DelayParameter | CountParameter, 0, 0,
     "segments follow without end"},
    {FaultKind::OversizedSegments, "oversized_segments", OctetsParameter, 0, 0,
     "APDUs are longer than was negotiated"},
    {FaultKind::Garbage, "garbage", OctetsParameter, 0, 0, "random octets, at most so many"},
    {FaultKind::HeadersOnly, "headers_only", HeadersParameter, 0, 0, "headers without content"},
    {FaultKind::OtherInstance, "other_instance", CodeParameter, 4194303, 4194303,
     "an I-Am states device instance code"},
    {FaultKind::WrongStation, "wrong_station", CodeParameter, 1, 255,
     "an I-Am comes from a MAC address that is higher by code"},
    {FaultKind::ChangingObjectList, "changing_object_list", NoParameter, 0, 0,
     "the object list loses its last object, then has it again"},
};

constexpr std::size_t FaultKinds = sizeof FaultRows / sizeof FaultRows[0];

constexpr FaultRow const& RowOf(FaultKind kind) {
    return FaultRows[static_cast<std::size_t>(kind)];
}

// Whether the kind is one of discovery: it disturbs nobody who only reads and writes known objects.
constexpr bool IsOfDiscovery(FaultKind kind) {
    return kind >= FaultKind::OtherInstance;
}

// Whether a fault of the kind can have the scope.
bool CanHaveScope(FaultKind kind, FaultScope scope);

// The row with that name, or null.
FaultRow const* FaultOfName(std::string_view name);

// A fault with the defaults of its kind: Delay of 2 s, Loss with a chance of one half, Garbage of up to 200
// octets, OtherInstance and WrongStation in the scope WhoIs, otherwise those of Fault.
Fault MakeFault(FaultKind kind);

// The fault in the form of a command: "truncate octet=9 times=1 on=write".
std::string TextOf(Fault const& fault);

}  // namespace simulator
