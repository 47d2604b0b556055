#pragma once

#include <map>

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"

namespace dorvel::BACnet {

// A project identifies object types and properties by codes: their positions in the pick lists of the
// engineering tool. These maps translate the codes to BACnet's numbers, so they list everything that a
// variable can be configured for. They are empty until InitObjectTypesMap.
//
// Any thread may call the functions below, as tasks initialise their blocks in parallel; a mutex protects the
// maps. Code that reads the maps directly must make sure that no block is being initialised.
extern std::map<int, ObjectTypeEnum> objectTypesMap;
extern std::map<int, PropertyIdentifierEnum> propertyTypesMap;

// Fills both maps. Another call changes nothing.
void InitObjectTypesMap();

// The object type of a configuration number. An unknown number gives 0, Analog_Input, and is added to the map
// with it, so that a project of a newer tool still starts.
ObjectTypeEnum GetBacnetObjectType(int configurationNumber);

// The property of a configuration number. An unknown number gives property 0 and is added to the map with it.
PropertyIdentifierEnum GetPropertyType(int configurationNumber);

}  // namespace dorvel::BACnet
