#include "RunOutlets.h"

#include "RunMqtt.h"

namespace workbench {

void AddOutlets(OutletList& outlets, RunOptions const& options, OutletParts const& parts) {
    outlets.Add(MakeMqtt(options.mqtt, parts));
}

}  // namespace workbench
