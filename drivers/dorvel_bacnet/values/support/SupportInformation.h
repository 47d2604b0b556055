#pragma once

#include <map>
#include <memory>
#include <stdexcept>

#include "ObjPropKey.h"
#include "PropertyInfo.h"
#include "PropertyValueParser.h"

// The pair of object type and property is not one that the driver reads or writes.
class SupportInformationException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Which properties of which object types the driver reads and writes, of what type each is, and which
// parser reads that type. Filled when the library is loaded and constant from then on, so any number of
// threads may look things up at once.
class SupportInformation {
public:
    // The one instance, made with the library's static objects: null before that, never made here.
    static SupportInformation* GetInstance();

    // What is known of a property. Throws SupportInformationException for a pair that is not supported.
    PropertyInfo GetPropertyInfo(ObjectTypeEnum objectType, PropertyIdentifierEnum property) const;
    // The parser for a type; it stays the table's. Null for a type that has none, so for an object
    // identifier: the caller refuses such a property like one that is not supported.
    PropertyValueParser* GetPropertyParser(PropertyTypeEnum type) const;

private:
    SupportInformation();

    std::map<ObjPropKey, PropertyInfo> properties;
    std::map<PropertyTypeEnum, std::unique_ptr<PropertyValueParser>> parsers;

    static std::unique_ptr<SupportInformation> m_instance;
};
