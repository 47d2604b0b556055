#include "Content.h"
#include "Refusal.h"
#include "Service.h"

namespace simulator {

void ReadProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack) {
    ObjectId const id = request.ObjectIdentifier(0);
    auto const propertyId = static_cast<PropertyId>(request.UnsignedNumber(1));
    auto const index = request.OptionalUnsigned(2);
    request.ExpectEnd();

    BacnetObject const* const object = device.Find(id);
    if (!object) {
        throw ServiceError{ErrorClass::Object, ErrorCode::UnknownObject};
    }
    Property const* const property = object->Find(propertyId);
    if (!property) {
        throw ServiceError{ErrorClass::Property, ErrorCode::UnknownProperty};
    }
    ack.Context(0, content::ObjectIdentifier(object->Id()));
    ack.Context(1, content::UnsignedNumber(static_cast<std::uint32_t>(propertyId)));
    if (index) {
        ack.Context(2, content::UnsignedNumber(*index));
    }
    ack.Opening(3);
    property->Encode(ack, index, now);
    ack.Closing(3);
}

}  // namespace simulator
