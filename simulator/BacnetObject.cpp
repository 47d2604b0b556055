#include "BacnetObject.h"

#include "Content.h"
#include "Refusal.h"

namespace simulator {

namespace {

ValuePtr fixed(ApplicationTag tag, Octets const& content, double number = 0) {
    TagWriter writer;
    writer.application(tag, content);
    return std::make_shared<FixedValue>(writer.take(), number);
}

// Property_List names neither itself nor the three that every object has (clause 12.1.1.4.1).
bool isListed(PropertyId id) {
    return id != PropertyId::Object_Identifier && id != PropertyId::Object_Name &&
           id != PropertyId::Object_Type && id != PropertyId::Property_List;
}

}  // namespace

void Property::encode(TagWriter& writer, std::optional<std::uint32_t> index, Moment const& now) const {
    if (!index) {
        for (ValuePtr const& value : values) {
            value->encode(writer, now);
        }
        return;
    }
    if (shape != Shape::Array) {
        throw ServiceError{ErrorClass::Property, ErrorCode::PropertyIsNotAnArray};
    }
    if (*index == 0) {
        fixedUnsigned(values.size())->encode(writer, now);
        return;
    }
    if (*index > values.size()) {
        throw ServiceError{ErrorClass::Property, ErrorCode::InvalidArrayIndex};
    }
    values[*index - 1]->encode(writer, now);
}

BacnetObject::BacnetObject(ObjectId id, std::string name, std::vector<Property> properties)
    : m_id(id), m_name(std::move(name)), m_properties(std::move(properties)) {
    m_properties.insert(m_properties.begin(),
                        {{PropertyId::Object_Identifier, Shape::Single, true, {fixedObjectIdentifier(id)}},
                         {PropertyId::Object_Name, Shape::Single, true, {fixedText(m_name)}},
                         {PropertyId::Object_Type, Shape::Single, true, {fixedEnumerated(id.type)}}});
    m_properties.push_back({PropertyId::Property_List, Shape::Array, true, {}});
    writePropertyList();
}

Property const* BacnetObject::find(PropertyId id) const {
    for (Property const& property : m_properties) {
        if (property.id == id) {
            return &property;
        }
    }
    return nullptr;
}

void BacnetObject::add(Property property) {
    m_properties.insert(m_properties.end() - 1, std::move(property));
    writePropertyList();
}

void BacnetObject::writePropertyList() {
    std::vector<ValuePtr> names;
    for (Property const& property : m_properties) {
        if (isListed(property.id)) {
            names.push_back(fixedEnumerated(static_cast<std::uint32_t>(property.id)));
        }
    }
    m_properties.back().values = std::move(names);
}

ValuePtr fixedUnsigned(std::uint64_t value) {
    return fixed(ApplicationTag::Unsigned, content::unsignedNumber(value), static_cast<double>(value));
}

ValuePtr fixedEnumerated(std::uint32_t value) {
    return fixed(ApplicationTag::Enumerated, content::unsignedNumber(value), value);
}

ValuePtr fixedObjectIdentifier(ObjectId id) {
    return fixed(ApplicationTag::ObjectIdentifier, content::objectIdentifier(id));
}

ValuePtr fixedText(std::string const& text) {
    return fixed(ApplicationTag::CharacterString, content::characterString(text));
}

ValuePtr fixedBits(std::string const& bits) {
    return fixed(ApplicationTag::BitString, content::bitString(bits));
}

}  // namespace simulator
