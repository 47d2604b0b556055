#include "Content.h"
#include "Refusal.h"
#include "Service.h"

namespace simulator {

namespace {

// More than 256 segments of 1476 octets: no client collects that.
constexpr std::size_t kLongestAck = 512 * 1024;

struct Reference {
    PropertyId id;
    std::optional<std::uint32_t> index;
};

void writeReference(Reference const& reference, TagWriter& ack) {
    ack.context(2, content::unsignedNumber(static_cast<std::uint32_t>(reference.id)));
    if (reference.index) {
        ack.context(3, content::unsignedNumber(*reference.index));
    }
}

void writeError(Reference const& reference, ServiceError const& error, TagWriter& ack) {
    writeReference(reference, ack);
    ack.opening(5);
    fixedEnumerated(static_cast<std::uint32_t>(error.errorClass))->encode(ack, {});
    fixedEnumerated(static_cast<std::uint32_t>(error.errorCode))->encode(ack, {});
    ack.closing(5);
}

void writeProperty(Property const& property, Reference const& reference, Moment const& now, TagWriter& ack) {
    TagWriter value;
    try {
        property.encode(value, reference.index, now);
    } catch (ServiceError const& error) {
        writeError(reference, error, ack);
        return;
    }
    writeReference(reference, ack);
    ack.opening(4);
    ack.encoded(value.take());
    ack.closing(4);
    if (ack.size() > kLongestAck) {
        throw Abort{AbortReason::BufferOverflow};
    }
}

bool isSpecial(PropertyId id) {
    return id == PropertyId::All || id == PropertyId::Required || id == PropertyId::Optional;
}

// Property_List is in none of the three (clause 15.7.3.1.2).
bool isMeant(PropertyId special, Property const& property) {
    if (property.id == PropertyId::Property_List) {
        return false;
    }
    return special == PropertyId::All || property.isRequired == (special == PropertyId::Required);
}

void writeSpecial(BacnetObject const& object, PropertyId special, Moment const& now, TagWriter& ack) {
    for (Property const& property : object.properties()) {
        if (isMeant(special, property)) {
            writeProperty(property, {property.id, std::nullopt}, now, ack);
        }
    }
}

void writeResult(BacnetObject const* object, Reference const& reference, Moment const& now, TagWriter& ack) {
    if (!object) {
        writeError(reference, {ErrorClass::Object, ErrorCode::UnknownObject}, ack);
    } else if (isSpecial(reference.id) && !reference.index) {
        writeSpecial(*object, reference.id, now, ack);
    } else if (isSpecial(reference.id)) {
        writeError(reference, {ErrorClass::Property, ErrorCode::PropertyIsNotAnArray}, ack);
    } else if (Property const* const property = object->find(reference.id)) {
        writeProperty(*property, reference, now, ack);
    } else {
        writeError(reference, {ErrorClass::Property, ErrorCode::UnknownProperty}, ack);
    }
}

// One ReadAccessSpecification (clause 21), which has at least one reference.
void readObject(TagReader& request, Device const& device, Moment const& now, TagWriter& ack) {
    ObjectId const id = request.objectIdentifier(0);
    BacnetObject const* const object = device.find(id);
    ack.context(0, content::objectIdentifier(object ? object->id() : id));
    ack.opening(1);
    request.opening(1);
    do {
        Reference reference{static_cast<PropertyId>(request.unsignedNumber(0)), std::nullopt};
        reference.index = request.optionalUnsigned(1);
        writeResult(object, reference, now, ack);
    } while (!request.closes(1));
    ack.closing(1);
}

}  // namespace

void readPropertyMultiple(TagReader& request, Device& device, Moment const& now, TagWriter& ack) {
    do {
        readObject(request, device, now, ack);
    } while (!request.atEnd());
}

}  // namespace simulator
