#include "Content.h"
#include "Refusal.h"
#include "Service.h"

namespace simulator {

namespace {

// More than 256 segments of 1476 octets, which no client can receive.
constexpr std::size_t LongestAck = 512 * 1024;

struct Reference {
    PropertyId id;
    std::optional<std::uint32_t> index;
};

void WriteReference(Reference const& reference, TagWriter& ack) {
    ack.Context(2, content::UnsignedNumber(static_cast<std::uint32_t>(reference.id)));
    if (reference.index) {
        ack.Context(3, content::UnsignedNumber(*reference.index));
    }
}

void WriteError(Reference const& reference, ServiceError const& error, TagWriter& ack) {
    WriteReference(reference, ack);
    ack.Opening(5);
    FixedEnumerated(static_cast<std::uint32_t>(error.errorClass))->Encode(ack, {});
    FixedEnumerated(static_cast<std::uint32_t>(error.errorCode))->Encode(ack, {});
    ack.Closing(5);
}

void WriteProperty(Property const& property, Reference const& reference, Moment const& now, TagWriter& ack) {
    TagWriter value;
    try {
        property.Encode(value, reference.index, now);
    } catch (ServiceError const& error) {
        WriteError(reference, error, ack);
        return;
    }
    WriteReference(reference, ack);
    ack.Opening(4);
    ack.Encoded(value.Take());
    ack.Closing(4);
    if (ack.size() > LongestAck) {
        throw Abort{AbortReason::BufferOverflow};
    }
}

bool IsSpecial(PropertyId id) {
    return id == PropertyId::All || id == PropertyId::Required || id == PropertyId::Optional;
}

// Property_List is in none of the three (clause 15.7.3.1.2).
bool IsMeant(PropertyId special, Property const& property) {
    if (property.id == PropertyId::Property_List) {
        return false;
    }
    return special == PropertyId::All || property.isRequired == (special == PropertyId::Required);
}

void WriteSpecial(BacnetObject const& object, PropertyId special, Moment const& now, TagWriter& ack) {
    for (Property const& property : object.Properties()) {
        if (IsMeant(special, property)) {
            WriteProperty(property, {property.id, std::nullopt}, now, ack);
        }
    }
}

void WriteResult(BacnetObject const* object, Reference const& reference, Moment const& now, TagWriter& ack) {
    if (!object) {
        WriteError(reference, {ErrorClass::Object, ErrorCode::UnknownObject}, ack);
    } else if (IsSpecial(reference.id) && !reference.index) {
        WriteSpecial(*object, reference.id, now, ack);
    } else if (IsSpecial(reference.id)) {
        WriteError(reference, {ErrorClass::Property, ErrorCode::PropertyIsNotAnArray}, ack);
    } else if (Property const* const property = object->Find(reference.id)) {
        WriteProperty(*property, reference, now, ack);
    } else {
        WriteError(reference, {ErrorClass::Property, ErrorCode::UnknownProperty}, ack);
    }
}

// One ReadAccessSpecification (clause 21), which has at least one reference.
void ReadObject(TagReader& request, Device const& device, Moment const& now, TagWriter& ack) {
    ObjectId const id = request.ObjectIdentifier(0);
    BacnetObject const* const object = device.Find(id);
    ack.Context(0, content::ObjectIdentifier(object ? object->Id() : id));
    ack.Opening(1);
    request.Opening(1);
    do {
        Reference reference{static_cast<PropertyId>(request.UnsignedNumber(0)), std::nullopt};
        reference.index = request.OptionalUnsigned(1);
        WriteResult(object, reference, now, ack);
    } while (!request.Closes(1));
    ack.Closing(1);
}

}  // namespace

void ReadPropertyMultiple(TagReader& request, Device& device, Moment const& now, TagWriter& ack) {
    do {
        ReadObject(request, device, now, ack);
    } while (!request.AtEnd());
}

}  // namespace simulator
