#include "BacnetObject.h"

#include "Content.h"
#include "Refusal.h"

namespace simulator {

namespace {

ValuePtr Fixed(ApplicationTag tag, Octets const& content, double number = 0) {
    TagWriter writer;
    writer.Application(tag, content);
    return std::make_shared<FixedValue>(writer.Take(), number);
}

// Property_List names neither itself nor the three that every object has (clause 12.1.1.4.1).
bool IsListed(PropertyId id) {
    return id != PropertyId::Object_Identifier && id != PropertyId::Object_Name &&
           id != PropertyId::Object_Type && id != PropertyId::Property_List;
}

}  // namespace

void Property::Encode(TagWriter& writer, std::optional<std::uint32_t> index, Moment const& now) const {
    if (!index) {
        for (ValuePtr const& value : values) {
            value->Encode(writer, now);
        }
        return;
    }
    CheckIndex(*index);
    ValuePtr const value = *index == 0 ? FixedUnsigned(values.size()) : values[*index - 1];
    value->Encode(writer, now);
}

void Property::CheckIndex(std::uint32_t index) const {
    if (shape != Shape::Array) {
        throw ServiceError{ErrorClass::Property, ErrorCode::PropertyIsNotAnArray};
    }
    if (index > values.size()) {
        throw ServiceError{ErrorClass::Property, ErrorCode::InvalidArrayIndex};
    }
}

BacnetObject::BacnetObject(ObjectId objectId, std::string objectName, std::vector<Property> ownProperties,
                           std::optional<PriorityArray> commands)
    : id(objectId),
      name(std::move(objectName)),
      properties(std::move(ownProperties)),
      priorities(std::move(commands)) {
    properties.insert(
        properties.begin(),
        {{PropertyId::Object_Identifier, Shape::Single, true, {FixedObjectIdentifier(objectId)}},
         {PropertyId::Object_Name, Shape::Single, true, {FixedText(name)}},
         {PropertyId::Object_Type, Shape::Single, true, {FixedEnumerated(objectId.type)}}});
    properties.push_back({PropertyId::Property_List, Shape::Array, true, {}});
    WritePropertyList();
    Property const* const present = Find(PropertyId::Present_Value);
    if (present && present->access == Access::WhileOutOfService) {
        measured = ValueOf(PropertyId::Present_Value);
    }
    Property const* const flags = Find(PropertyId::Status_Flags);
    derivesStatusFlags = flags && flags->values.empty();
    ShowStatusFlags();
    ShowCommands();
}

ValuePtr BacnetObject::ValueOf(PropertyId propertyId) const {
    Property const* const property = Find(propertyId);
    return property && !property->values.empty() ? property->values.front() : nullptr;
}

bool BacnetObject::IsOutOfService(Moment const& now) const {
    ValuePtr const value = ValueOf(PropertyId::Out_Of_Service);
    return value && value->Number(now) != 0;
}

void BacnetObject::Command(std::uint8_t priority, ValuePtr value) {
    priorities->Command(priority, std::move(value));
    ShowCommands();
}

void BacnetObject::Write(PropertyId propertyId, std::optional<std::uint32_t> index,
                         std::vector<ValuePtr> values, Moment const& now) {
    Property* const property = FindMutable(propertyId);
    if (index) {
        property->values[*index - 1] = values.front();
    } else {
        property->values = std::move(values);
    }
    if (propertyId == PropertyId::Out_Of_Service) {
        ShowMeasured(now);
    }
    ShowStatusFlags();
    ShowCommands();
}

void BacnetObject::ShowMeasured(Moment const& now) {
    if (!measured) {
        return;
    }
    if (!IsOutOfService(now)) {
        SetValue(PropertyId::Present_Value, measured);
        return;
    }
    ValuePtr const current = ValueOf(PropertyId::Present_Value);
    TagWriter writer;
    current->Encode(writer, now);
    SetValue(PropertyId::Present_Value, std::make_shared<FixedValue>(writer.Take(), current->Number(now)));
}

void BacnetObject::ShowStatusFlags() {
    if (derivesStatusFlags) {
        SetValue(PropertyId::Status_Flags,
                 std::make_shared<StatusFlagsValue>(ValueOf(PropertyId::Event_State),
                                                    ValueOf(PropertyId::Reliability),
                                                    ValueOf(PropertyId::Out_Of_Service)));
    }
}

// Present_Value is the highest command or else Relinquish_Default (clause 19.2.1).
void BacnetObject::ShowCommands() {
    if (!priorities) {
        return;
    }
    ValuePtr const commanded = priorities->Highest();
    SetValue(PropertyId::Present_Value, commanded ? commanded : ValueOf(PropertyId::Relinquish_Default));
    bool const isDateTime = Find(PropertyId::Present_Value)->datatype == Datatype::DateTime;
    FindMutable(PropertyId::Priority_Array)->values = priorities->Elements(isDateTime);
}

void BacnetObject::SetValue(PropertyId propertyId, ValuePtr value) {
    FindMutable(propertyId)->values = {std::move(value)};
}

Property* BacnetObject::FindMutable(PropertyId propertyId) {
    for (Property& property : properties) {
        if (property.id == propertyId) {
            return &property;
        }
    }
    return nullptr;
}

Property const* BacnetObject::Find(PropertyId propertyId) const {
    for (Property const& property : properties) {
        if (property.id == propertyId) {
            return &property;
        }
    }
    return nullptr;
}

void BacnetObject::Add(Property property) {
    properties.insert(properties.end() - 1, std::move(property));
    WritePropertyList();
}

void BacnetObject::Rename(ObjectId otherId, std::string otherName) {
    id = otherId;
    name = std::move(otherName);
    SetValue(PropertyId::Object_Identifier, FixedObjectIdentifier(id));
    SetValue(PropertyId::Object_Name, FixedText(name));
}

void BacnetObject::WritePropertyList() {
    std::vector<ValuePtr> names;
    for (Property const& property : properties) {
        if (IsListed(property.id)) {
            names.push_back(FixedEnumerated(static_cast<std::uint32_t>(property.id)));
        }
    }
    properties.back().values = std::move(names);
}

ValuePtr FixedUnsigned(std::uint64_t value) {
    return Fixed(ApplicationTag::Unsigned, content::UnsignedNumber(value), static_cast<double>(value));
}

ValuePtr FixedEnumerated(std::uint32_t value) {
    return Fixed(ApplicationTag::Enumerated, content::UnsignedNumber(value), value);
}

ValuePtr FixedObjectIdentifier(ObjectId id) {
    return Fixed(ApplicationTag::ObjectIdentifier, content::ObjectIdentifier(id));
}

ValuePtr FixedText(std::string const& text) {
    return Fixed(ApplicationTag::CharacterString, content::CharacterString(text));
}

ValuePtr FixedBits(std::string const& bits) {
    return Fixed(ApplicationTag::BitString, content::BitString(bits));
}

}  // namespace simulator
