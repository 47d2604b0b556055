#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <unordered_map>

#include "ObjPropKey.h"
#include "PropertyInfo.h"
#include "PropertyValueParser.h"

// The pair of object type and property is not one that the driver reads or writes.
class SupportInformationException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// States which properties of which object types the driver reads and writes, the type of each, and the parser
// of that type. It is filled when the library is loaded and constant afterwards, so any thread may use it.
class SupportInformation {
public:
    // The only instance. The static objects of the library create it; before that the result is null.
    static SupportInformation* GetInstance();

    // The entry of a property. Throws SupportInformationException for a pair that is not supported.
    PropertyInfo GetPropertyInfo(ObjectTypeEnum objectType, PropertyIdentifierEnum property) const;
    // The parser of a type, which stays owned by the table. Null for a type without a parser, such as an
    // object identifier: the caller treats that property as not supported.
    PropertyValueParser* GetPropertyParser(PropertyTypeEnum type) const;

private:
    SupportInformation();

    // Types are numbered up to Weekly_Schedule.
    static constexpr std::size_t TypeNumbers =
        static_cast<std::size_t>(PropertyTypeEnum::Weekly_Schedule) + 1;

    std::unordered_map<ObjPropKey, PropertyInfo, ObjPropHash> properties;
    // By the number of the type.
    std::array<std::unique_ptr<PropertyValueParser>, TypeNumbers> parsers;

    static std::unique_ptr<SupportInformation> m_instance;
};
