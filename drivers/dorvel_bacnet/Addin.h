#pragma once

#include "dorvel/Registration.h"

namespace dorvel::BACnet {

// Registers the block type and the configuration processor with the host. Gives 0.
int Init();

// The host's stages: Start clears and Stop sets TBACnet::IsTerminated for all blocks; others change nothing.
// Any thread may call it. Gives 0.
int ConfigProcessorCallback(void const* source, ConfigProcessorMode mode, ControllerConfig* config);

}  // namespace dorvel::BACnet
