#pragma once

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"

namespace dorvel::BACnet {

// What a configured variable addresses in its device.
struct tagAddress {
    // As configured; only its low 22 bits reach the wire.
    int objectNumber = 0;
    ObjectTypeEnum objectType{};
    PropertyIdentifierEnum propertyId{};
};

}  // namespace dorvel::BACnet
