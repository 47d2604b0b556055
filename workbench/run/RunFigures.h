#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "MeasuringEnvironment.h"
#include "Snapshot.h"

namespace workbench {

// Conditions at the end of a run that can be its failure. Write states are those of any variable.
enum class Trouble { Fault, Refused, Pending, Differs, Unconfirmed, Suspect, Overrun };

// "fault", "refused", ...
std::optional<Trouble> TroubleOfName(std::string_view name);
std::vector<std::string> TroubleNames();

// Statistics of the blocks' cycles. Thread-safe.
class RunFigures {
public:
    void Count(SharedSnapshot const& block);

    // Whether the condition holds after the latest cycle of any block; Overrun, whether there was any during
    // the run.
    bool Has(Trouble trouble) const;

    // The figures as lines for people:
    //   cycles             12
    //   faults              0   (cycles of a block that ended in fault)
    //   objects polled    744   (in cycles without fault)
    //   requests          744
    //   answers           744
    //   round trip      0.412 ms median, 1.873 ms maximum
    // then a line for each block with the time of its cycles and its overruns,
    //   AHU: cycle 0.4 ms median, 3.1 ms maximum, 0 overruns
    // for each block that has causes in its latest cycle,
    //   AHU: no answer since 09:30:33 (3 requests)
    // for each variable whose latest value comes from an error of the device,
    //   AHU.Supply air: suspect, device: unknown-object
    // and for each variable that was set, with its state:
    //   AHU.Supply air setpoint = 22 written
    std::string Summary(TrafficFigures const& traffic) const;

private:
    mutable std::mutex mutex;
    unsigned long long cycles = 0;
    unsigned long long faults = 0;
    unsigned long long objects = 0;
    // The latest of each block, by its name.
    std::map<std::string, SharedSnapshot> latest;
};

}  // namespace workbench
