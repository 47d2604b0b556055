#include "ObjectIdentifier.h"

#include "BitConverter.h"

namespace {

constexpr unsigned InstanceBits = 22;
constexpr unsigned InstanceMask = (1U << InstanceBits) - 1;

}  // namespace

ObjectIdentifier::ObjectIdentifier(ObjectTypeEnum type, unsigned int instance)
    : objectType(type), instanceNumber(instance) {}

ObjectIdentifier::ObjectIdentifier(Tag const& tag) {
    unsigned const packed = BitConverter::ToUInt32(tag.data, 0);
    objectType = static_cast<ObjectTypeEnum>(packed >> InstanceBits);
    instanceNumber = packed & InstanceMask;
}

unsigned int ObjectIdentifier::GetPacked() const {
    return static_cast<unsigned>(objectType) << InstanceBits | (instanceNumber & InstanceMask);
}

std::vector<char> ObjectIdentifier::GetBytes() const {
    return BitConverter::GetBytes(GetPacked());
}

int ObjectIdentifier::Compare(ObjectIdentifier other) const {
    unsigned const typeOrder = static_cast<unsigned>(objectType) - static_cast<unsigned>(other.objectType);
    return static_cast<int>(typeOrder != 0 ? typeOrder : instanceNumber - other.instanceNumber);
}
