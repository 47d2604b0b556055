#pragma once

#include "dorvelshare/LuaDataProvider.h"
#include "tagAddress.h"

namespace dorvel::BACnet {

// One configured variable: its target in the runtime and its source in the device. It owns both. Either may
// be null until it is complete.
struct tagReadData {
    tagReadData() = default;
    tagReadData(tagReadData const&) = delete;
    tagReadData& operator=(tagReadData const&) = delete;
    ~tagReadData() {
        delete address;
        delete descriptor;
    }

    DriverVarDsc* descriptor = nullptr;
    tagAddress* address = nullptr;
};

}  // namespace dorvel::BACnet
