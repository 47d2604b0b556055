#pragma once

#include "dorvelshare/LuaDataProvider.h"

namespace dorvel::BACnet {

// One variable between the configuration of the host and the tag table. TBACnet::InitTags takes the ownership
// of the descriptor. The two codes are those of the configuration (CodeMaps.h).
struct VelaBufferParameters {
    DriverVarDsc* descriptor = nullptr;
    int objectType = 0;
    int objectProperties = 0;
    int objectNumber = 0;
};

}  // namespace dorvel::BACnet
