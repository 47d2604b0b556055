#include "ObjectIdentifier.h"

#include "BitConverter.h"

namespace {

constexpr unsigned instanceBits = 22;
constexpr unsigned instanceMask = (1U << instanceBits) - 1;

}  // namespace

ObjectIdentifier::ObjectIdentifier(ObjectTypeEnum type, unsigned int instance)
    : objectType(type), instanceNumber(instance) {}

ObjectIdentifier::ObjectIdentifier(Tag const& tag) {
    unsigned const packed = BitConverter::ToUInt32(tag.data, 0);
    objectType = static_cast<ObjectTypeEnum>(packed >> instanceBits);
    instanceNumber = packed & instanceMask;
}

std::vector<char> ObjectIdentifier::GetBytes() const {
    unsigned const packedType = static_cast<unsigned>(objectType) << instanceBits;
    return BitConverter::GetBytes(packedType | (instanceNumber & instanceMask));
}

int ObjectIdentifier::Compare(ObjectIdentifier other) const {
    unsigned const typeOrder = static_cast<unsigned>(objectType) - static_cast<unsigned>(other.objectType);
    return static_cast<int>(typeOrder != 0 ? typeOrder : instanceNumber - other.instanceNumber);
}
