#pragma once

#include <map>
#include <memory>
#include <vector>

#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "PropertyValueParser.h"
#include "TagBase.h"

// The elements that the services have in common, written and read in one place.

// The tags of a service by their context tag number, as TagParser::ReadSequence gives them.
using ServiceElements = std::map<char, std::unique_ptr<TagBase>>;

// The element, or null when it is absent.
TagBase* FindElement(ServiceElements const& elements, char tagNumber);

// Element 0. Throws FormatErrorException when it is absent or constructed.
ObjectIdentifier ReadObjectIdentifier(ServiceElements const& elements);

// Element 1 as a property identifier. Throws FormatErrorException when it is absent or constructed.
PropertyIdentifierEnum ReadPropertyIdentifier(ServiceElements const& elements);

// Element 2 as a property array index, of which the low 32 bits count. Throws FormatErrorException for a
// constructed tag.
int ReadArrayIndex(TagBase& element);

// Element 0: context tag 0 with the four octets of the object identifier.
std::vector<char> ObjectBytes(ObjectIdentifier object);

// Elements 0 and 1: as above, then context tag 1 with the low eight bits of the property identifier.
// Properties above 255 are cut on purpose.
std::vector<char> ObjectAndPropertyBytes(ObjectIdentifier object, PropertyIdentifierEnum property);

// Element 2: context tag 2 with the property array index in four octets, never shortened.
std::vector<char> ArrayIndexBytes(unsigned int arrayIndex);

// The parser that the support table names for the property's values; it stays the table's. Throws
// SupportInformationException for a pair that the table does not hold, and the same for a type without a
// parser: to a caller both are properties that are not supported.
PropertyValueParser const& FindValueParser(ObjectIdentifier object, PropertyIdentifierEnum property);

// Element 3 as a value of that property. Throws FormatErrorException when it is absent or primitive, as
// FindValueParser does, and what the parser throws.
std::unique_ptr<CPropertyValue> ReadPropertyValue(ServiceElements const& elements, ObjectIdentifier object,
                                                  PropertyIdentifierEnum property);
