#include "Device.h"

#include <utility>

namespace simulator {

namespace {

constexpr std::uint16_t LastStandardType = 127;  // others are of vendors (clause 23.4.1)

Octets EncodedOf(Value const& value) {
    TagWriter writer;
    value.Encode(writer, {});
    return writer.Take();
}

// One bit for each object type up to the highest number.
std::string SupportedTypes(std::vector<BacnetObject> const& objects) {
    std::string bits(1, '0');
    auto const support = [&bits](std::size_t code) {
        if (bits.size() <= code) {
            bits.resize(code + 1, '0');
        }
        bits[code] = '1';
    };
    support(DeviceObjectType().code);
    for (ObjectType const& type : AllObjectTypes()) {
        support(type.code);
    }
    for (BacnetObject const& object : objects) {
        if (object.Id().type <= LastStandardType) {
            support(object.Id().type);
        }
    }
    return bits;
}

}  // namespace

Device::Device(BacnetObject deviceObject, std::vector<BacnetObject> otherObjects,
               DeviceSettings deviceSettings)
    : objects(std::move(otherObjects)), settings(std::move(deviceSettings)) {
    objects.insert(objects.begin(), std::move(deviceObject));
    std::vector<ValuePtr> identifiers;
    for (BacnetObject const& object : objects) {
        places.emplace(object.Id(), identifiers.size());
        identifiers.push_back(FixedObjectIdentifier(object.Id()));
    }
    AddToDevice({PropertyId::Object_List, Shape::Array, true, std::move(identifiers)});
    AddToDevice({PropertyId::Protocol_Object_Types_Supported,
                 Shape::Single,
                 true,
                 {FixedBits(SupportedTypes(objects))}});
}

// In Object_List the device has its new identifier too, at whatever position it is.
Device Device::Copy(std::uint32_t instance, std::string const& name, DeviceSettings otherSettings) const {
    Device copy = *this;
    copy.settings = std::move(otherSettings);
    BacnetObject& device = copy.objects.front();
    copy.places.erase(Id());
    device.Rename({Id().type, instance}, name);
    copy.places.emplace(device.Id(), 0);
    std::vector<ValuePtr> list = device.Find(PropertyId::Object_List)->values;
    Octets const before = EncodedOf(*FixedObjectIdentifier(Id()));
    for (ValuePtr& element : list) {
        element = EncodedOf(*element) == before ? FixedObjectIdentifier(device.Id()) : element;
    }
    device.Write(PropertyId::Object_List, std::nullopt, std::move(list), {});
    return copy;
}

// A device file can give other values.
void Device::AddToDevice(Property property) {
    if (!objects.front().Find(property.id)) {
        objects.front().Add(std::move(property));
    }
}

void Device::ChangeObjectList() {
    BacnetObject& device = objects.front();
    std::vector<ValuePtr> list = device.Find(PropertyId::Object_List)->values;
    if (unlisted) {
        list.push_back(std::exchange(unlisted, nullptr));
    } else if (!list.empty()) {
        unlisted = list.back();
        list.pop_back();
    }
    device.Write(PropertyId::Object_List, std::nullopt, std::move(list), {});
    if (ValuePtr const revision = device.ValueOf(PropertyId::Database_Revision)) {
        auto const next = static_cast<std::uint64_t>(revision->Number({}) + 1);
        device.Write(PropertyId::Database_Revision, std::nullopt, {FixedUnsigned(next)}, {});
    }
}

BacnetObject const* Device::Find(ObjectId wanted) const {
    if (wanted == ObjectId{DeviceObjectType().code, ObjectId::LastInstance}) {
        return &objects.front();
    }
    auto const place = places.find(wanted);
    return place == places.end() ? nullptr : &objects[place->second];
}

BacnetObject* Device::Find(ObjectId wanted) {
    BacnetObject const* const found = std::as_const(*this).Find(wanted);
    return found ? &objects[static_cast<std::size_t>(found - objects.data())] : nullptr;
}

}  // namespace simulator
