#pragma once

#include "dorvelshare/LuaDataProvider.h"

namespace dorvel::BACnet {

// One variable on its way from the host's configuration into the tag table. The descriptor's owner changes on
// that way: TBACnet::InitTags takes it over. The two codes are of the configuration's own numbering
// (CodeMaps.h).
struct VelaBufferParameters {
    DriverVarDsc* descriptor = nullptr;
    int objectType = 0;
    int objectProperties = 0;
    int objectNumber = 0;
};

}  // namespace dorvel::BACnet
