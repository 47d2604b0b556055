#include "WritePropertyRequest.h"

#include <algorithm>

#include "ComplexTag.h"
#include "Octets.h"
#include "ServiceElements.h"
#include "TagParser.h"

namespace {

std::vector<char> WrappedValueBytes(CPropertyValue const& value) {
    ComplexTag wrapper(3, true);
    std::vector<Tag> tags = value.ToApplicationTags();
    std::vector<std::unique_ptr<TagBase>> complexTags = value.ToApplicationComplexTags();
    for (Tag& tag : tags) {
        wrapper.AddSubTag(std::make_unique<Tag>(std::move(tag)));
    }
    if (tags.empty()) {
        for (std::unique_ptr<TagBase>& tag : complexTags) {
            wrapper.AddSubTag(std::move(tag));
        }
    }
    return wrapper.GetBytes();
}

}  // namespace

WritePropertyRequest::WritePropertyRequest(ObjectIdentifier object, PropertyIdentifierEnum property,
                                           int arrayIndex, CPropertyValue* value)
    : propertyArrayIndex(static_cast<unsigned int>(std::max(arrayIndex, 0))),
      propertyIdentifier(property),
      objectId(object),
      propertyValue(value) {}

std::vector<char> WritePropertyRequest::GetBytes() const {
    std::vector<char> octets = ObjectAndPropertyBytes(objectId, propertyIdentifier);
    if (propertyArrayIndex != 0) {
        AppendOctets(octets, ArrayIndexBytes(propertyArrayIndex));
    }
    AppendOctets(octets, WrappedValueBytes(*propertyValue));
    return octets;
}

std::unique_ptr<ConfirmedServiceRequest> WritePropertyRequestParser::Parse(IStreamBase& stream) const {
    ServiceElements const elements = TagParser::ReadSequence(stream, 4);
    auto request = std::make_unique<WritePropertyRequest>();
    request->SetObjectId(ReadObjectIdentifier(elements));
    request->SetPropertyIdentifier(ReadPropertyIdentifier(elements));
    if (TagBase* const index = FindElement(elements, 2)) {
        request->SetPropertyArrayIndex(static_cast<unsigned int>(ReadArrayIndex(*index)));
    }
    request->SetPropertyValue(
        ReadPropertyValue(elements, request->GetObjectId(), request->GetPropertyIdentifier()));
    return request;
}
