#pragma once

#include "dorvel/Registration.h"

namespace dorvel::BACnet {

// Registers the block type and the configuration processor with the host. Returns 0.
int Init();

// The callback for the stages of the host: Start clears and Stop sets TBACnet::IsTerminated for all blocks;
// other stages change nothing. Any thread may call it. Returns 0.
int ConfigProcessorCallback(void const* source, ConfigProcessorMode mode, ControllerConfig* config);

}  // namespace dorvel::BACnet
