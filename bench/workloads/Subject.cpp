#include "Subject.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "BinaryAnswers.h"

namespace bench {

namespace {

using test::Hex;
using test::Octets;
using test::operator+;

// Codes of the configuration.
constexpr int LoopType = 16;
constexpr int ScheduleType = 22;
constexpr int WeeklySchedule = 30;

struct LoopProperty {
    int property;          // of the configuration
    unsigned char number;  // of BACnet
    _OpcUa_BuiltInType type;
    char const* value;  // hexadecimal
};

constexpr unsigned char DescriptionNumber = 28;

// The properties of a loop. The description's length depends on the subject.
constexpr LoopProperty LoopProperties[] = {
    {0, 85, OpcUaType_Double, "44 42 28 00 00"},    // Present_Value
    {17, 81, OpcUaType_Boolean, "10"},              // Out_Of_Service
    {28, DescriptionNumber, OpcUaType_String, ""},  // Description
    {1, 108, OpcUaType_Double, "44 41 A8 00 00"},   // Setpoint
    {9, 93, OpcUaType_Double, "44 3F 80 00 00"},    // Proportional_Constant
    {10, 49, OpcUaType_Double, "44 3F 00 00 00"},   // Integral_Constant
    {11, 26, OpcUaType_Double, "44 00 00 00 00"},   // Derivative_Constant
    {27, 117, OpcUaType_Int32, "91 3E"},            // Units
    {18, 103, OpcUaType_Int32, "91 00"},            // Reliability
    {29, 36, OpcUaType_Int32, "91 00"},             // Event_State
    {16, 111, OpcUaType_Int32, "82 04 00"},         // Status_Flags
};
constexpr std::size_t MostDistinct = std::size(LoopProperties);
constexpr LoopProperty const& statusFlags = LoopProperties[MostDistinct - 1];

constexpr std::size_t UsualDescription = 24;
// The most octets that the header of a character string with more than 65535 octets needs.
constexpr std::size_t LongestHead = 8;

// The octets of a number, the most significant one first.
Octets BigEndian(std::size_t number, int octets) {
    Octets result;
    for (int shift = 8 * (octets - 1); shift >= 0; shift -= 8) {
        result.push_back(static_cast<char>(number >> shift & 0xFF));
    }
    return result;
}

// A character string with this number of letters in UTF-8 (ASHRAE 135 clause 20.2.9).
Octets CharacterString(std::size_t letters) {
    std::size_t const length = letters + 1;
    Octets head{0x75};
    if (length < 254) {
        head = head + BigEndian(length, 1);
    } else if (length < 65536) {
        head = head + Octets{static_cast<char>(254)} + BigEndian(length, 2);
    } else {
        head = head + Octets{static_cast<char>(255)} + BigEndian(length, 4);
    }
    return head + Octets{0} + Octets(letters, 'x');
}

Octets Result(LoopProperty const& property, std::size_t description) {
    bool const isText = property.number == DescriptionNumber;
    return test::ResultOf(static_cast<char>(property.number),
                          isText ? CharacterString(description) : Hex(property.value));
}

Octets Payload(Octets const& results) {
    return test::ResultsOf(Octets(4, 0), results);
}

Octets LoopPayload(std::size_t count, std::size_t description) {
    Octets results;
    for (std::size_t index = 0; index < count; ++index) {
        test::Append(results, Result(LoopProperties[index % MostDistinct], description));
    }
    if (count < MostDistinct) {
        test::Append(results, Result(statusFlags, description));
    }
    return Payload(results);
}

Subject Loop(std::size_t count) {
    Subject subject;
    subject.objectType = LoopType;
    for (std::size_t index = 0; index < count; ++index) {
        LoopProperty const& property = LoopProperties[index % MostDistinct];
        subject.variables.push_back({property.property, {OpcUaType_DataValue, property.type}});
    }
    subject.records = std::min(count, MostDistinct);
    return subject;
}

Subject Properties(std::size_t count) {
    Subject subject = Loop(count);
    subject.answers = {test::WholeAnswer(0, LoopPayload(count, UsualDescription))};
    return subject;
}

// The driver's requests allow APDUs of 1024 octets, of which five are the header.
constexpr std::size_t SegmentSize = 1024 - 5;

Subject Segments(std::size_t count) {
    constexpr std::size_t asked = 3;
    Subject subject = Loop(asked);
    std::size_t const rest = LoopPayload(asked, 0).size() + LongestHead;
    Octets const payload = LoopPayload(asked, count * SegmentSize - rest);
    for (std::size_t number = 0; number < count; ++number) {
        auto const first = payload.begin() + static_cast<std::ptrdiff_t>(number * SegmentSize);
        auto const length = std::min<std::ptrdiff_t>(payload.end() - first, SegmentSize);
        subject.answers.push_back(
            test::SegmentAnswer(0, number, number + 1 < count, Octets(first, first + length)));
    }
    return subject;
}

Subject Schedule(std::size_t entriesPerDay) {
    Octets days;
    for (int day = 0; day < 7; ++day) {
        test::Append(days, Hex("0E"));
        for (std::size_t entry = 0; entry < entriesPerDay; ++entry) {
            test::Append(days, Hex("B4 08 1E 00 00 44 41 AC 00 00"));  // 8:30 and 21.5
        }
        test::Append(days, Hex("0F"));
    }
    Subject subject;
    subject.objectType = ScheduleType;
    subject.variables = {{WeeklySchedule, {OpcUaType_DataValue, OpcUaType_String}}};
    subject.answers = {
        test::WholeAnswer(0, Payload(test::ResultOf(123, days) + Result(statusFlags, UsualDescription)))};
    subject.records = 1;
    return subject;
}

Subject Write(std::size_t) {
    Subject subject = Loop(1);
    subject.isWritten = true;
    subject.answers = {test::Datagram({0x20, 0, 0x0F})};
    subject.records = 0;
    return subject;
}

Subject Silent(std::size_t count) {
    Subject subject = Loop(count);
    subject.records = 0;
    return subject;
}

struct Kind {
    char const* name;
    Subject (*make)(std::size_t number);
};
constexpr Kind Kinds[] = {{"properties", Properties},
                          {"segments", Segments},
                          {"schedule", Schedule},
                          {"write", Write},
                          {"silent", Silent}};

}  // namespace

Subject SubjectNamed(std::string const& name) {
    std::size_t const dash = name.find('-');
    auto const kind = std::find_if(std::begin(Kinds), std::end(Kinds), [&](Kind const& candidate) {
        return name.substr(0, dash) == candidate.name;
    });
    if (dash == std::string::npos || kind == std::end(Kinds)) {
        throw std::invalid_argument("no such workload: " + name);
    }
    unsigned long const number = std::stoul(name.substr(dash + 1));
    if (number == 0) {
        throw std::invalid_argument("a workload of nothing: " + name);
    }
    return kind->make(number);
}

}  // namespace bench
