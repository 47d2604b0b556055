#pragma once

#include <map>
#include <mutex>
#include <string>

#include "MeasuringEnvironment.h"
#include "Snapshot.h"

namespace workbench {

// Statistics of the blocks' cycles. Thread-safe.
class RunFigures {
public:
    void Count(BlockSnapshot const& block);

    // Whether a block was in fault after its latest cycle.
    bool AnyFault() const;

    // The figures as lines for people:
    //   cycles             12
    //   faults              0   (cycles of a block that ended in fault)
    //   objects polled    744   (in cycles without fault)
    //   requests          744
    //   answers           744
    //   round trip      0.412 ms median, 1.873 ms maximum
    // and a line for each variable that was set, with its state:
    //   AHU.Supply air setpoint = 22 written
    std::string Summary(TrafficFigures const& traffic) const;

private:
    mutable std::mutex mutex;
    unsigned long long cycles = 0;
    unsigned long long faults = 0;
    unsigned long long objects = 0;
    std::map<BlockConfig const*, bool> inFault;
    std::map<std::string, std::string> writes;  // by the variable's full name
};

}  // namespace workbench
