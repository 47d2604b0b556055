#pragma once

#include <string>

#include "Judge.h"
#include "opcua/OpcUa_Variant.h"

namespace test {

// Values of the driver and of a device, for the tests of verdicts and reports.

inline OpcUa_VariantHlp UInt32(unsigned value) {
    OpcUa_VariantHlp variant;
    variant.SetUInt(value);
    return variant;
}

inline OpcUa_VariantHlp UInt64(unsigned long long value) {
    OpcUa_VariantHlp variant;
    variant.SetUInt64(value);
    return variant;
}

inline OpcUa_VariantHlp Int32(int value) {
    OpcUa_VariantHlp variant;
    variant.SetInt(value);
    return variant;
}

inline OpcUa_VariantHlp FileTime(long long value) {
    OpcUa_VariantHlp variant;
    variant.SetTime(value);
    return variant;
}

inline workbench::DeviceValue ValueOf(workbench::DeviceKind kind, std::string shown) {
    workbench::DeviceValue value;
    value.kind = kind;
    value.shown = std::move(shown);
    return value;
}

inline std::string NumberShown(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
}

inline workbench::DeviceValue RealValueOf(double number) {
    workbench::DeviceValue value = ValueOf(workbench::DeviceKind::Real, NumberShown(number));
    value.real = number;
    return value;
}

inline workbench::DeviceValue DoubleOf(double number) {
    workbench::DeviceValue value = RealValueOf(number);
    value.kind = workbench::DeviceKind::Double;
    return value;
}

inline workbench::DeviceValue UnsignedOf(std::uint64_t number) {
    workbench::DeviceValue value = ValueOf(workbench::DeviceKind::Unsigned, std::to_string(number));
    value.number = number;
    return value;
}

inline workbench::DeviceValue EnumeratedOf(std::uint64_t number) {
    workbench::DeviceValue value = UnsignedOf(number);
    value.kind = workbench::DeviceKind::Enumerated;
    return value;
}

inline workbench::DeviceValue SignedOf(std::int64_t number) {
    workbench::DeviceValue value = ValueOf(workbench::DeviceKind::Signed, std::to_string(number));
    value.integer = number;
    return value;
}

inline workbench::DeviceValue TextOf(std::string const& text) {
    workbench::DeviceValue value = ValueOf(workbench::DeviceKind::CharacterString, text);
    value.text = text;
    return value;
}

inline workbench::DeviceValue BitsOf(std::string const& bits) {
    workbench::DeviceValue value = TextOf(bits);
    value.kind = workbench::DeviceKind::BitString;
    return value;
}

inline workbench::DeviceValue DateOf(standard::CalendarDate const& date) {
    workbench::DeviceValue value = ValueOf(workbench::DeviceKind::Date, "a date");
    value.date = date;
    return value;
}

inline workbench::DeviceReading Answered(workbench::DeviceValue value) {
    return {std::move(value), {}, std::chrono::milliseconds(1)};
}

inline workbench::DeviceReading Failed(workbench::ReadProblem problem) {
    return {{}, std::move(problem), std::chrono::milliseconds(1)};
}

// The driver after a good cycle, with this value.
inline workbench::DriverReading Holding(OpcUa_VariantHlp value) {
    workbench::DriverReading driver;
    driver.state.Value = std::move(value);
    driver.state.Status = OpcUa_Good;
    return driver;
}

// The driver after a poll that failed at an object.
inline workbench::DriverReading Faulty(std::string endedAt) {
    workbench::DriverReading driver;
    driver.fault = true;
    driver.faultText = "No connection";
    driver.pollEndedAt = std::move(endedAt);
    return driver;
}

}  // namespace test
