#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "CommonOptions.h"
#include "LogBuffer.h"
#include "MetricsOptions.h"
#include "MqttOptions.h"
#include "PageOptions.h"
#include "RecordOptions.h"
#include "RunFigures.h"

namespace workbench {

// Of the command run.
struct RunOptions : ProjectOptions {
    std::vector<std::string> sets;  // "Block.Variable=value", in order
    OutputFormat format = OutputFormat::Auto;
    // Only what has changed is shown, of numbers what has changed by more than this. None: every cycle.
    std::optional<double> changesBeyond;
    unsigned long long cycles = 0;  // 0: no limit
    bool trace = false;
    std::set<Trouble> failOn;  // each makes the exit code 1
    bool standby = false;
    LogFormat logFormat = LogFormat::Text;
    std::string captureFile;  // empty: none
    std::optional<bool> summary;
    PageOptions page;
    MqttOptions mqtt;
    RecordOptions record;
    MetricsOptions metrics;
};

void DefineRun(CLI::App& command, RunOptions& options);

}  // namespace workbench
