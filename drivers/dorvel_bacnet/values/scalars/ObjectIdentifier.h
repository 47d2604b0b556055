#pragma once

#include <vector>

#include "ObjectTypeEnum.h"
#include "Tag.h"

// The identifier of a BACnet object (ASHRAE 135 clause 20.2.14). On the wire it has four octets, big-endian:
// the type in the top ten bits, the instance in the low 22.
class ObjectIdentifier {
public:
    ObjectIdentifier() = default;
    // Takes any numbers. GetBytes drops the bits that do not fit.
    ObjectIdentifier(ObjectTypeEnum type, unsigned int instance);
    // Reads the data of a tag, whatever its number. Fewer than four octets are the low end; more throw
    // ParseException.
    explicit ObjectIdentifier(Tag const& tag);

    ObjectTypeEnum GetObjectType() const { return objectType; }
    void SetObjectType(ObjectTypeEnum type) { objectType = type; }
    unsigned int GetInstanceNumber() const { return instanceNumber; }
    void SetInstanceNumber(unsigned int instance) { instanceNumber = instance; }

    // Type and instance as one number of 32 bits, and its octets.
    unsigned int GetPacked() const;
    std::vector<char> GetBytes() const;
    // The difference of the types; if they are equal, that of the instances.
    int Compare(ObjectIdentifier other) const;

private:
    ObjectTypeEnum objectType{};
    unsigned int instanceNumber = 0;
};
