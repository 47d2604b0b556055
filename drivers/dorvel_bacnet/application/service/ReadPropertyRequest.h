#pragma once

#include <memory>
#include <vector>

#include "ConfirmedServiceRequest.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "ServiceRequestParser.h"

// ReadProperty-Request (ASHRAE 135 clause 15.5). The client never sends it: a poll uses ReadPropertyMultiple.
class ReadPropertyRequest : public ConfirmedServiceRequest {
public:
    ReadPropertyRequest() = default;
    // A negative arrayIndex is stored as 0.
    ReadPropertyRequest(ObjectIdentifier object, PropertyIdentifierEnum property, int arrayIndex);

    // Always seven octets: context tag 0 with the object, context tag 1 with the low eight bits of the
    // property. The array index, optional in clause 15.5, is never written.
    std::vector<char> GetBytes() const override;

    // 0 also means that there is no index.
    unsigned int GetPropertyArrayIndex() const { return propertyArrayIndex; }
    PropertyIdentifierEnum GetPropertyIdentifier() const { return propertyIdentifier; }
    ObjectIdentifier GetObjectId() const { return objectId; }

private:
    unsigned int propertyArrayIndex = 0;
    PropertyIdentifierEnum propertyIdentifier{};
    ObjectIdentifier objectId{};
};

class ReadPropertyRequestParser : public ServiceRequestParser {
public:
    // Throws FormatErrorException when the object or the property is absent, or an element is constructed.
    std::unique_ptr<ConfirmedServiceRequest> Parse(IStreamBase& stream) const override;
};
