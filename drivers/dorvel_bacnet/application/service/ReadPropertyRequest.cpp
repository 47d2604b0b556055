#include "ReadPropertyRequest.h"

#include <algorithm>

#include "ServiceElements.h"
#include "TagKind.h"
#include "TagParser.h"

ReadPropertyRequest::ReadPropertyRequest(ObjectIdentifier object, PropertyIdentifierEnum property,
                                         int arrayIndex)
    : propertyArrayIndex(static_cast<unsigned int>(std::max(arrayIndex, 0))),
      propertyIdentifier(property),
      objectId(object) {}

std::vector<char> ReadPropertyRequest::GetBytes() const {
    return ObjectAndPropertyBytes(objectId, propertyIdentifier);
}

std::unique_ptr<ConfirmedServiceRequest> ReadPropertyRequestParser::Parse(IStreamBase& stream) const {
    ServiceElements const elements = TagParser::ReadSequence(stream, 3);
    // Both have to be there before either is read.
    Tag const& object = RequirePrimitive(FindElement(elements, 0));
    Tag const& property = RequirePrimitive(FindElement(elements, 1));
    TagBase* const index = FindElement(elements, 2);
    int const arrayIndex = index == nullptr ? -1 : ReadArrayIndex(*index);
    return std::make_unique<ReadPropertyRequest>(ObjectIdentifier(object),
                                                 TagParser::GetPropertyIdentifier(property), arrayIndex);
}
