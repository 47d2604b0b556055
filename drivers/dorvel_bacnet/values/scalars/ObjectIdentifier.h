#pragma once

#include <vector>

#include "ObjectTypeEnum.h"
#include "Tag.h"

// The name of a BACnet object. On the wire four octets, big-endian: the type in the top ten bits, the
// instance in the low 22 (ASHRAE 135 clause 20.2.14).
class ObjectIdentifier {
public:
    ObjectIdentifier() = default;
    // Any numbers; what does not fit on the wire is cut off there.
    ObjectIdentifier(ObjectTypeEnum type, unsigned int instance);
    // From a tag's data, whatever its number; fewer than four octets are the low end. More than four throw
    // ParseException.
    explicit ObjectIdentifier(Tag const& tag);

    ObjectTypeEnum GetObjectType() const { return objectType; }
    void SetObjectType(ObjectTypeEnum type) { objectType = type; }
    unsigned int GetInstanceNumber() const { return instanceNumber; }
    void SetInstanceNumber(unsigned int instance) { instanceNumber = instance; }

    std::vector<char> GetBytes() const;
    // The difference of the types, or if there is none of the instances.
    int Compare(ObjectIdentifier other) const;

private:
    ObjectTypeEnum objectType{};
    unsigned int instanceNumber = 0;
};
