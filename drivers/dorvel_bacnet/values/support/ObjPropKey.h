#pragma once

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"

// A property of an object type: the key of the support table.
struct ObjPropKey {
    ObjPropKey() = default;
    ObjPropKey(ObjectTypeEnum type, PropertyIdentifierEnum identifier)
        : objectType(type), property(identifier) {}

    // By object type, then by property, both as signed numbers.
    bool operator<(ObjPropKey const& other) const {
        return objectType != other.objectType ? objectType < other.objectType : property < other.property;
    }

    ObjectTypeEnum objectType{};
    PropertyIdentifierEnum property{};
};
