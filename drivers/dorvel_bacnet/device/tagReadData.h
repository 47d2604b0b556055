#pragma once

#include "dorvelshare/LuaDataProvider.h"
#include "tagAddress.h"

namespace dorvel::BACnet {

// One configured variable: where its value goes in the runtime, and where it comes from. Owns both; either
// may be null while it is filled.
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
