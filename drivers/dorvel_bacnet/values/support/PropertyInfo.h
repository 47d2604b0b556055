#pragma once

#include "PropertyTypeEnum.h"

// What the support table knows of a property.
struct PropertyInfo {
    PropertyInfo() = default;
    explicit PropertyInfo(PropertyTypeEnum propertyType) : type(propertyType) {}

    // False in every row and read by nothing; they keep the record's layout.
    bool isArray = false;
    bool isOptional = false;
    PropertyTypeEnum type = PropertyTypeEnum::Real;
};
