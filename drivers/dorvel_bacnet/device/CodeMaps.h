#pragma once

#include <map>

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"

namespace dorvel::BACnet {

// A project names object types and properties by small numbers of its own, the places in the pick lists of
// the engineering tool. These maps turn them into BACnet's numbers; they are also the list of what a variable
// can be configured for. Empty until InitObjectTypesMap. The functions below may be called by several threads
// at once, as tasks initialise their blocks side by side: a mutex gives each caller the maps as a whole. Code
// that looks at the maps themselves has to make sure that no block is being initialised meanwhile.
extern std::map<int, ObjectTypeEnum> objectTypesMap;
extern std::map<int, PropertyIdentifierEnum> propertyTypesMap;

// Fills both maps; a further call changes nothing.
void InitObjectTypesMap();

// The object type of a configuration number. An unknown number gives 0, Analog_Input, and enters the map with
// it: projects that were made with a newer tool are to come up all the same.
ObjectTypeEnum GetBacnetObjectType(int configurationNumber);

// The property, in spite of the name, of a configuration number. An unknown number gives property 0 and
// enters the map with it.
PropertyIdentifierEnum GetPropertyType(int configurationNumber);

}  // namespace dorvel::BACnet
