#pragma once

namespace test {

// The codes of a project for object types and properties that the tests use most.
namespace code {

constexpr int Accumulator = 0;
constexpr int AnalogInput = 1;
constexpr int AnalogOutput = 2;
constexpr int AnalogValue = 3;
constexpr int BinaryValue = 6;
constexpr int MultiStateValue = 18;
constexpr int MultiStateOutput = 19;
constexpr int OctetStringValue = 20;
constexpr int Schedule = 22;

constexpr int PresentValue = 0;
constexpr int StatusFlags = 16;
constexpr int OutOfService = 17;
constexpr int Description = 28;
constexpr int WeeklySchedule = 30;
constexpr int ExceptionSchedule = 31;

}  // namespace code

}  // namespace test
