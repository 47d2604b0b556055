#include "DeviceAnswer.h"

#include "DatumText.h"
#include "HexText.h"
#include "PropertyId.h"
#include "ScheduleWords.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;

DeviceKind KindOf(DatumKind kind) {
    switch (kind) {
        case DatumKind::Null:
            return DeviceKind::Null;
        case DatumKind::Boolean:
            return DeviceKind::Boolean;
        case DatumKind::Unsigned:
            return DeviceKind::Unsigned;
        case DatumKind::Signed:
            return DeviceKind::Signed;
        case DatumKind::Real:
            return DeviceKind::Real;
        case DatumKind::Double:
            return DeviceKind::Double;
        case DatumKind::OctetString:
            return DeviceKind::OctetString;
        case DatumKind::CharacterString:
            return DeviceKind::CharacterString;
        case DatumKind::BitString:
            return DeviceKind::BitString;
        case DatumKind::Enumerated:
            return DeviceKind::Enumerated;
        case DatumKind::Date:
            return DeviceKind::Date;
        case DatumKind::Time:
            return DeviceKind::Time;
        default:
            return DeviceKind::Other;
    }
}

bool Is(standard::PropertyReference const& reference, standard::PropertyId property) {
    return reference.property == static_cast<std::uint32_t>(property);
}

void TakeSchedule(DeviceValue& value, ScheduleWords words) {
    value.kind = DeviceKind::Schedule;
    value.text = std::move(words.text);
    value.lost = std::move(words.lost);
}

void TakeOne(DeviceValue& value, Datum const& datum) {
    value.kind = KindOf(datum.kind);
    value.number = datum.number;
    value.integer = datum.Signed();
    value.real = datum.real;
    value.text = datum.kind == DatumKind::OctetString ? tools::HexText(datum.octets, tools::HexDigits::Lower)
                                                      : datum.text;
    (datum.kind == DatumKind::Time ? value.time : value.date) = datum.calendar;
}

DeviceValue ValueOf(standard::ReadResult const& result) {
    std::vector<Datum> const& values = result.values;
    DeviceValue value;
    value.shown = standard::DatumText(values, result.reference);
    if (Is(result.reference, standard::PropertyId::Weekly_Schedule)) {
        TakeSchedule(value, WeeklyWords(values));
    } else if (Is(result.reference, standard::PropertyId::Exception_Schedule)) {
        TakeSchedule(value, ExceptionWords(values));
    } else if (values.size() == 2 && values[0].kind == DatumKind::Date && values[1].kind == DatumKind::Time) {
        value.kind = DeviceKind::DateTime;
        value.date = values[0].calendar;
        value.time = values[1].calendar;
    } else if (values.size() == 1) {
        TakeOne(value, values[0]);
    }
    bool const isPresentValue = Is(result.reference, standard::PropertyId::Present_Value);
    if (value.kind == DeviceKind::Schedule) {
        value.shown = value.text;
    } else if (value.kind == DeviceKind::Enumerated && !isPresentValue && value.number <= 0xFFFFFFFF) {
        // The driver shows numbers.
        std::string const number = std::to_string(value.number);
        value.shown += value.shown == number ? "" : " (" + number + ")";
    }
    return value;
}

// Segments that stop are an answer, which cannot be read.
ReadProblem::Kind KindOf(standard::Failure const& failure) {
    switch (failure.kind) {
        case standard::Failure::Kind::Error:
            return ReadProblem::Kind::Error;
        case standard::Failure::Kind::Reject:
            return ReadProblem::Kind::Reject;
        case standard::Failure::Kind::Abort:
            return ReadProblem::Kind::Abort;
        case standard::Failure::Kind::Malformed:
        case standard::Failure::Kind::Incomplete:
            return ReadProblem::Kind::Malformed;
        default:
            return ReadProblem::Kind::Silent;
    }
}

}  // namespace

DeviceReading ReadingOf(standard::ReadResult const& result, std::chrono::milliseconds elapsed) {
    DeviceReading reading;
    reading.elapsed = elapsed;
    if (result.failure) {
        standard::Failure const& failure = *result.failure;
        reading.problem = {KindOf(failure), failure.errorClass, failure.code, FailureText(failure)};
    } else {
        reading.value = ValueOf(result);
    }
    return reading;
}

std::string WordsOf(standard::ReadResult const& result) {
    return result.failure || result.values.empty() ? std::string()
                                                   : standard::DatumText(result.values, result.reference);
}

}  // namespace workbench
