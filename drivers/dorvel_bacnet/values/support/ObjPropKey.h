#pragma once

#include <cstddef>

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

    bool operator==(ObjPropKey const& other) const {
        return objectType == other.objectType && property == other.property;
    }

    ObjectTypeEnum objectType{};
    PropertyIdentifierEnum property{};
};

// Distinct for all pairs of the support table.
struct ObjPropHash {
    std::size_t operator()(ObjPropKey const& key) const {
        return static_cast<std::size_t>(key.objectType) << 10 ^ static_cast<std::size_t>(key.property);
    }
};
