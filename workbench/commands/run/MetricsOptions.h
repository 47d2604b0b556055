#pragma once

#include <string>

namespace CLI {
class App;
}

namespace workbench {

// The metrics of the command run.
struct MetricsOptions {
    bool isOn = false;
    std::string address;  // as ReadHttpAddress reads it
};

// --metrics. The options must outlive the command.
void AddMetricsOptions(CLI::App& command, MetricsOptions& options);

}  // namespace workbench
