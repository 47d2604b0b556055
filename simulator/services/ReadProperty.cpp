#include "Content.h"
#include "Refusal.h"
#include "Service.h"

namespace simulator {

void readProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack) {
    ObjectId const id = request.objectIdentifier(0);
    auto const propertyId = static_cast<PropertyId>(request.unsignedNumber(1));
    auto const index = request.optionalUnsigned(2);
    request.expectEnd();

    BacnetObject const* const object = device.find(id);
    if (!object) {
        throw ServiceError{ErrorClass::Object, ErrorCode::UnknownObject};
    }
    Property const* const property = object->find(propertyId);
    if (!property) {
        throw ServiceError{ErrorClass::Property, ErrorCode::UnknownProperty};
    }
    ack.context(0, content::objectIdentifier(object->id()));
    ack.context(1, content::unsignedNumber(static_cast<std::uint32_t>(propertyId)));
    if (index) {
        ack.context(2, content::unsignedNumber(*index));
    }
    ack.opening(3);
    property->encode(ack, index, now);
    ack.closing(3);
}

}  // namespace simulator
