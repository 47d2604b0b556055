#include "Device.h"

#include <utility>

namespace simulator {

namespace {

// One bit for each object type up to the highest that there is.
std::string supportedTypes() {
    std::string bits(1, '0');
    auto const support = [&bits](std::size_t code) {
        if (bits.size() <= code) {
            bits.resize(code + 1, '0');
        }
        bits[code] = '1';
    };
    support(deviceObjectType().code);
    for (ObjectType const& type : objectTypes()) {
        support(type.code);
    }
    return bits;
}

}  // namespace

Device::Device(BacnetObject deviceObject, std::vector<BacnetObject> objects, DeviceSettings settings)
    : m_objects(std::move(objects)), m_settings(std::move(settings)) {
    m_objects.insert(m_objects.begin(), std::move(deviceObject));
    std::vector<ValuePtr> identifiers;
    for (BacnetObject const& object : m_objects) {
        m_places.emplace(object.id(), identifiers.size());
        identifiers.push_back(fixedObjectIdentifier(object.id()));
    }
    m_objects.front().add({PropertyId::Object_List, Shape::Array, true, std::move(identifiers)});
    m_objects.front().add(
        {PropertyId::Protocol_Object_Types_Supported, Shape::Single, true, {fixedBits(supportedTypes())}});
}

BacnetObject const* Device::find(ObjectId wanted) const {
    if (wanted == ObjectId{deviceObjectType().code, ObjectId::kLastInstance}) {
        return &m_objects.front();
    }
    auto const place = m_places.find(wanted);
    return place == m_places.end() ? nullptr : &m_objects[place->second];
}

BacnetObject* Device::find(ObjectId wanted) {
    BacnetObject const* const found = std::as_const(*this).find(wanted);
    return found ? &m_objects[static_cast<std::size_t>(found - m_objects.data())] : nullptr;
}

}  // namespace simulator
