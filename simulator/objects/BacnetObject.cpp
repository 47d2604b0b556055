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
    checkIndex(*index);
    ValuePtr const value = *index == 0 ? fixedUnsigned(values.size()) : values[*index - 1];
    value->encode(writer, now);
}

void Property::checkIndex(std::uint32_t index) const {
    if (shape != Shape::Array) {
        throw ServiceError{ErrorClass::Property, ErrorCode::PropertyIsNotAnArray};
    }
    if (index > values.size()) {
        throw ServiceError{ErrorClass::Property, ErrorCode::InvalidArrayIndex};
    }
}

BacnetObject::BacnetObject(ObjectId id, std::string name, std::vector<Property> properties,
                           std::optional<PriorityArray> priorities)
    : m_id(id),
      m_name(std::move(name)),
      m_properties(std::move(properties)),
      m_priorities(std::move(priorities)) {
    m_properties.insert(m_properties.begin(),
                        {{PropertyId::Object_Identifier, Shape::Single, true, {fixedObjectIdentifier(id)}},
                         {PropertyId::Object_Name, Shape::Single, true, {fixedText(m_name)}},
                         {PropertyId::Object_Type, Shape::Single, true, {fixedEnumerated(id.type)}}});
    m_properties.push_back({PropertyId::Property_List, Shape::Array, true, {}});
    writePropertyList();
    Property const* const present = find(PropertyId::Present_Value);
    if (present && present->access == Access::WhileOutOfService) {
        m_measured = valueOf(PropertyId::Present_Value);
    }
    Property const* const flags = find(PropertyId::Status_Flags);
    m_derivesStatusFlags = flags && flags->values.empty();
    showStatusFlags();
    showCommands();
}

ValuePtr BacnetObject::valueOf(PropertyId id) const {
    Property const* const property = find(id);
    return property && !property->values.empty() ? property->values.front() : nullptr;
}

bool BacnetObject::isOutOfService(Moment const& now) const {
    ValuePtr const value = valueOf(PropertyId::Out_Of_Service);
    return value && value->number(now) != 0;
}

void BacnetObject::command(std::uint8_t priority, ValuePtr value) {
    m_priorities->command(priority, std::move(value));
    showCommands();
}

void BacnetObject::write(PropertyId id, std::optional<std::uint32_t> index, std::vector<ValuePtr> values,
                         Moment const& now) {
    Property* const property = findMutable(id);
    if (index) {
        property->values[*index - 1] = values.front();
    } else {
        property->values = std::move(values);
    }
    if (id == PropertyId::Out_Of_Service) {
        showMeasured(now);
    }
    showStatusFlags();
    showCommands();
}

void BacnetObject::showMeasured(Moment const& now) {
    if (!m_measured) {
        return;
    }
    if (!isOutOfService(now)) {
        setValue(PropertyId::Present_Value, m_measured);
        return;
    }
    ValuePtr const current = valueOf(PropertyId::Present_Value);
    TagWriter writer;
    current->encode(writer, now);
    setValue(PropertyId::Present_Value, std::make_shared<FixedValue>(writer.take(), current->number(now)));
}

void BacnetObject::showStatusFlags() {
    if (m_derivesStatusFlags) {
        setValue(PropertyId::Status_Flags,
                 std::make_shared<StatusFlagsValue>(valueOf(PropertyId::Event_State),
                                                    valueOf(PropertyId::Reliability),
                                                    valueOf(PropertyId::Out_Of_Service)));
    }
}

// Present_Value is the highest command or else Relinquish_Default (clause 19.2.1).
void BacnetObject::showCommands() {
    if (!m_priorities) {
        return;
    }
    ValuePtr const commanded = m_priorities->highest();
    setValue(PropertyId::Present_Value, commanded ? commanded : valueOf(PropertyId::Relinquish_Default));
    bool const isDateTime = find(PropertyId::Present_Value)->datatype == Datatype::DateTime;
    findMutable(PropertyId::Priority_Array)->values = m_priorities->elements(isDateTime);
}

void BacnetObject::setValue(PropertyId id, ValuePtr value) {
    findMutable(id)->values = {std::move(value)};
}

Property* BacnetObject::findMutable(PropertyId id) {
    for (Property& property : m_properties) {
        if (property.id == id) {
            return &property;
        }
    }
    return nullptr;
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
