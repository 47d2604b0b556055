#pragma once

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"

namespace dorvel::BACnet {

// The object and property that a configured variable reads and writes.
struct tagAddress {
    // As configured; the low 22 bits are sent.
    int objectNumber = 0;
    ObjectTypeEnum objectType{};
    PropertyIdentifierEnum propertyId{};
};

}  // namespace dorvel::BACnet
