#include "MetricsOptions.h"

#include <CLI/CLI.hpp>

#include "AllowedHosts.h"

namespace workbench {

void AddMetricsOptions(CLI::App& command, MetricsOptions& options) {
    command
        .add_option_function<std::string>(
            "--metrics",
            [&options](std::string const& text) {
                try {
                    ReadHttpAddress(text);
                } catch (std::runtime_error const& mistake) {
                    throw CLI::ValidationError("--metrics", mistake.what());
                }
                options.isOn = true;
                options.address = text;
            },
            "Serves metrics for Prometheus at http://ADDRESS:PORT/metrics, without a token; a port alone is "
            "one "
            "of 127.0.0.1")
        ->type_name("ADDRESS:PORT");
}

}  // namespace workbench
