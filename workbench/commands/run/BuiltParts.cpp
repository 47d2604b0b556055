#include "BuiltParts.h"

#include <CLI/CLI.hpp>
#include <string>

namespace workbench {

namespace {

#ifdef WORKBENCH_HAS_PAGE
constexpr bool HasPage = true;
#else
constexpr bool HasPage = false;
#endif

#ifdef WORKBENCH_HAS_MQTT
constexpr bool HasMqtt = true;
#else
constexpr bool HasMqtt = false;
#endif

#ifdef WORKBENCH_HAS_RECORD
constexpr bool HasRecord = true;
#else
constexpr bool HasRecord = false;
#endif

#ifdef WORKBENCH_HAS_METRICS
constexpr bool HasMetrics = true;
#else
constexpr bool HasMetrics = false;
#endif

struct Part {
    bool isBuiltIn;
    bool isAskedFor;
    char const* option;
    char const* name;
    char const* setting;  // of the build
};

}  // namespace

void RefuseMissingParts(RunOptions const& options) {
    Part const parts[] = {
        {HasPage, options.page.isOn, "--page", "the page", "DORVEL_PAGE"},
        {HasMqtt, options.mqtt.isOn, "--mqtt", "MQTT", "DORVEL_MQTT"},
        {HasRecord, !options.record.file.empty(), "--record", "the recording", "DORVEL_RECORD"},
        {HasMetrics, options.metrics.isOn, "--metrics", "metrics", "DORVEL_METRICS"},
    };
    for (Part const& part : parts) {
        if (part.isAskedFor && !part.isBuiltIn) {
            throw CLI::ValidationError(part.option, std::string("this program was built without ") +
                                                        part.name + "; build it with -D" + part.setting +
                                                        "=ON");
        }
    }
}

}  // namespace workbench
