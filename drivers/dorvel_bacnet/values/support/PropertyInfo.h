#pragma once

#include "PropertyTypeEnum.h"

// The entry of the support table for one property.
struct PropertyInfo {
    PropertyInfo() = default;
    explicit PropertyInfo(PropertyTypeEnum propertyType) : type(propertyType) {}

    // False in every row, and nothing reads them. They keep the layout of the record.
    bool isArray = false;
    bool isOptional = false;
    PropertyTypeEnum type = PropertyTypeEnum::Real;
};
