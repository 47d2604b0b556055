#pragma once

#include <memory>

#include "dorvelshare/LuaDataProvider.h"
#include "tagAddress.h"

namespace dorvel::BACnet {

// One configured variable: where its value goes in the runtime, and where it comes from. Owns both.
struct tagReadData {
    std::unique_ptr<DriverVarDsc> descriptor;
    std::unique_ptr<tagAddress> address;
};

}  // namespace dorvel::BACnet
