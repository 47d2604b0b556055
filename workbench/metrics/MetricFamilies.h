#pragma once

#include <vector>

namespace workbench {

// The metrics of a run, in the order in which they are written.
enum class Metric {
    BuildInfo,
    RunInfo,
    RunStart,
    VariableValue,
    VariableQuality,
    VariableSuspect,
    BlockInfo,
    BlockUp,
    BlockFault,
    BlockStandby,
    BlockLastCycleTime,
    BlockCycles,
    BlockFaultCycles,
    BlockCycleLast,
    BlockCycleMedian,
    BlockCycleMaximum,
    BlockCauses,
    BlockWrites,
    BlockWriteResults,
    TaskPeriod,
    TaskOverruns,
    DatagramsSent,
    DatagramsReceived,
    RoundTripCount,
    RoundTripLast,
    RoundTripMedian,
    RoundTripMaximum,
    OutletUp,
    OutletStates,
    OutletSince,
    OutletFigures
};

struct MetricFamily {
    char const* name;
    bool isCounter;      // else a gauge
    char const* labels;  // their names, with ", " between; empty without
    char const* help;    // one line without a backslash
};

MetricFamily const& FamilyOf(Metric metric);
// All, in the order of Metric.
std::vector<MetricFamily> const& MetricFamilies();

}  // namespace workbench
