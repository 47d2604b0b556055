#include "BuildValue.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

#include "BinaryValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DoubleValue.h"
#include "ExceptionScheduleValue.h"
#include "IntValue.h"
#include "RealValue.h"
#include "TimeValue.h"
#include "UintValue.h"
#include "WeeklyScheduleValue.h"
#include "dorvelshare/RTime.h"

namespace dorvel::BACnet {

namespace {

using Value = std::unique_ptr<CPropertyValue>;

[[noreturn]] void Refuse() {
    throw std::runtime_error("Property Type not supported");
}

// The result of the getter, or the default value of the type if it fails.
template <class T>
T Get(OpcUa_VariantHlp const& variant, OpcUa_StatusCode (OpcUa_VariantHlp::*getter)(T&) const) {
    T value{};
    (variant.*getter)(value);
    return value;
}

Value BuildBinary(OpcUa_VariantHlp const& variant, long long) {
    bool const active = Get(variant, &OpcUa_VariantHlp::GetBool);
    return std::make_unique<BinaryValue>(active ? BACnetBinaryPV::Active : BACnetBinaryPV::Inactive);
}

Value BuildUnsigned(OpcUa_VariantHlp const& variant, long long) {
    return std::make_unique<UintValue>(
        static_cast<unsigned long long>(Get(variant, &OpcUa_VariantHlp::GetInt64)));
}

Value BuildSigned(OpcUa_VariantHlp const& variant, long long) {
    return std::make_unique<IntValue>(Get(variant, &OpcUa_VariantHlp::GetInt64));
}

Value BuildReal(OpcUa_VariantHlp const& variant, long long) {
    static_assert(std::numeric_limits<float>::is_iec559, "too large numbers have to become infinite");
    return std::make_unique<RealValue>(static_cast<float>(Get(variant, &OpcUa_VariantHlp::GetDouble)));
}

Value BuildDouble(OpcUa_VariantHlp const& variant, long long) {
    return std::make_unique<DoubleValue>(Get(variant, &OpcUa_VariantHlp::GetDouble));
}

// A value made from a text in UTF-8.
template <class Text>
Value BuildText(OpcUa_VariantHlp const& variant, long long) {
    return std::make_unique<Text>(Get(variant, &OpcUa_VariantHlp::GetString), EncodingTypeEnum::Utf8);
}

Value BuildTime(OpcUa_VariantHlp const& variant, long long) {
    int const milliseconds = Get(variant, &OpcUa_VariantHlp::GetInt);
    return std::make_unique<TimeValue>(
        static_cast<char>(milliseconds / 3'600'000), static_cast<char>(milliseconds % 3'600'000 / 60'000),
        static_cast<char>(milliseconds % 60'000 / 1'000), static_cast<char>(milliseconds % 1'000 / 100));
}

// The calendar record of a time plus `shift` units of 100 ns.
RTime CalendarOf(OpcUa_VariantHlp const& variant, long long shift) {
    long long time = 0;
    if (variant.GetTime(time, 1) != OpcUa_Good || time == 0) {
        Refuse();
    }
    FileTime const fileTime =
        ULLtoFT(static_cast<unsigned long long>(time) + static_cast<unsigned long long>(shift));
    RTime calendar{};
    if (FileTimeToRTime(&fileTime, &calendar) != 0) {
        Refuse();
    }
    return calendar;
}

constexpr std::uint8_t AnyWeekday = 255;

Date DateOf(RTime const& calendar) {
    return Date(static_cast<std::uint8_t>(calendar.year - 1900), static_cast<std::uint8_t>(calendar.month),
                static_cast<std::uint8_t>(calendar.day), AnyWeekday);
}

Value BuildDate(OpcUa_VariantHlp const& variant, long long localTimeDiff) {
    return std::make_unique<DateValue>(DateOf(CalendarOf(variant, localTimeDiff)));
}

Value BuildDateTime(OpcUa_VariantHlp const& variant, long long) {
    RTime const calendar = CalendarOf(variant, 0);
    Time const time(static_cast<std::uint8_t>(calendar.hour), static_cast<std::uint8_t>(calendar.minute),
                    static_cast<std::uint8_t>(calendar.second),
                    static_cast<std::uint8_t>(calendar.millisecond / 100));
    return std::make_unique<DateTimeValue>(DateOf(calendar), time);
}

struct BuildRow {
    PropertyTypeEnum type;
    Value (*build)(OpcUa_VariantHlp const& value, long long localTimeDiff);
};

constexpr BuildRow BuildRows[] = {
    {PropertyTypeEnum::Boolean, BuildBinary},
    {PropertyTypeEnum::Unsigned, BuildUnsigned},
    {PropertyTypeEnum::Signed, BuildSigned},
    {PropertyTypeEnum::Real, BuildReal},
    {PropertyTypeEnum::Double, BuildDouble},
    {PropertyTypeEnum::Character_String, BuildText<CharacterStringValue>},
    {PropertyTypeEnum::Time, BuildTime},
    {PropertyTypeEnum::Date, BuildDate},
    {PropertyTypeEnum::Date_Time, BuildDateTime},
    {PropertyTypeEnum::Binary_PV, BuildBinary},
    {PropertyTypeEnum::Exception_Schedule, BuildText<ExceptionScheduleValue>},
    {PropertyTypeEnum::Weekly_Schedule, BuildText<WeeklyScheduleValue>},
};

}  // namespace

std::unique_ptr<CPropertyValue> BuildValue(PropertyTypeEnum type, OpcUa_VariantHlp const& value,
                                           long long localTimeDiff) {
    auto const row = std::find_if(std::begin(BuildRows), std::end(BuildRows),
                                  [type](BuildRow const& candidate) { return candidate.type == type; });
    if (row == std::end(BuildRows)) {
        Refuse();
    }
    return row->build(value, localTimeDiff);
}

}  // namespace dorvel::BACnet
