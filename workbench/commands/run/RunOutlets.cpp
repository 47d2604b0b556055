#include "RunOutlets.h"

#include "RunMetrics.h"
#include "RunMqtt.h"
#include "RunRecording.h"

namespace workbench {

void AddOutlets(OutletList& outlets, RunOptions const& options, OutletParts const& parts) {
    outlets.Add(MakeMqtt(options.mqtt, parts));
    outlets.Add(MakeRecording(options.record, parts));
    outlets.Add(MakeMetrics(options.metrics, parts));
}

}  // namespace workbench
