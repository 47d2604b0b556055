#pragma once

#include <map>
#include <memory>
#include <vector>

#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "PropertyValueParser.h"
#include "TagBase.h"

// The elements that the services have in common. Throughout, "element n" is the one with context tag n.

// The tags of a service by context tag number, from TagParser::ReadSequence.
using ServiceElements = std::map<char, std::unique_ptr<TagBase>>;

// The element, or null when it is absent.
TagBase* FindElement(ServiceElements const& elements, char tagNumber);

// Element 0. Throws FormatErrorException when it is absent or constructed.
ObjectIdentifier ReadObjectIdentifier(ServiceElements const& elements);

// Element 1 as a property identifier. Throws FormatErrorException when it is absent or constructed.
PropertyIdentifierEnum ReadPropertyIdentifier(ServiceElements const& elements);

// Element 2 as a property array index: the low 32 bits. Throws FormatErrorException for a constructed tag.
int ReadArrayIndex(TagBase& element);

// Element 0: context tag 0 with the four octets of the object identifier.
std::vector<char> ObjectBytes(ObjectIdentifier object);

// Elements 0 and 1: as above, then context tag 1 with the low eight bits of the property identifier.
// Departure from ASHRAE 135 clause 20.2.11: the upper bits of a property above 255 are not sent. Installed
// systems rely on this.
std::vector<char> ObjectAndPropertyBytes(ObjectIdentifier object, PropertyIdentifierEnum property);

// Element 2: context tag 2 with the property array index, always in four octets. Departure from clause
// 20.2.4, which has the fewest octets.
std::vector<char> ArrayIndexBytes(unsigned int arrayIndex);

// The parser that the support table has for the values of a property; the table keeps the ownership. Throws
// SupportInformationException for a pair outside the table and for a type without a parser: for the caller
// neither property is supported.
PropertyValueParser const& FindValueParser(ObjectIdentifier object, PropertyIdentifierEnum property);

// Element 3 as a value of that property. Throws FormatErrorException when it is absent or primitive, and what
// FindValueParser and the parser throw.
std::unique_ptr<CPropertyValue> ReadPropertyValue(ServiceElements const& elements, ObjectIdentifier object,
                                                  PropertyIdentifierEnum property);
