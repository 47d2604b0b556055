#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "CPropertyValue.h"
#include "ConfirmedServiceRequest.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "ServiceRequestParser.h"

// WriteProperty-Request (ASHRAE 135 clause 15.9) without its priority: the sender appends that to the
// finished message. It owns its value.
class WritePropertyRequest : public ConfirmedServiceRequest {
public:
    // No index, property 0, no value.
    WritePropertyRequest() = default;
    // Takes ownership of the value. A negative arrayIndex is stored as 0.
    WritePropertyRequest(ObjectIdentifier object, PropertyIdentifierEnum property, int arrayIndex,
                         CPropertyValue* value);

    // Context tag 0 with the object; context tag 1 with the low eight bits of the property; context tag 2
    // with the index in four octets, unless it is 0; the value between the opening and closing tag 3. The
    // value is written with ToApplicationTags(), or if that is empty with ToApplicationComplexTags(). There
    // must be a value. Throws what these two operations throw.
    std::vector<char> GetBytes() const override;

    // 0 means that there is no index. Clause 15.9 allows index 0, the size of an array; it cannot be sent
    // here.
    unsigned int GetPropertyArrayIndex() const { return propertyArrayIndex; }
    void SetPropertyArrayIndex(unsigned int arrayIndex) { propertyArrayIndex = arrayIndex; }
    PropertyIdentifierEnum GetPropertyIdentifier() const { return propertyIdentifier; }
    void SetPropertyIdentifier(PropertyIdentifierEnum value) { propertyIdentifier = value; }
    ObjectIdentifier GetObjectId() const { return objectId; }
    void SetObjectId(ObjectIdentifier value) { objectId = value; }
    // Null when there is none. This object keeps the ownership.
    CPropertyValue* GetPropertyValue() const { return propertyValue.get(); }
    // Destroys the previous value.
    void SetPropertyValue(std::unique_ptr<CPropertyValue> value) { propertyValue = std::move(value); }

private:
    unsigned int propertyArrayIndex = 0;
    PropertyIdentifierEnum propertyIdentifier{};
    ObjectIdentifier objectId{};
    std::unique_ptr<CPropertyValue> propertyValue;
};

// Parses a request up to the value. A priority after it stays in the stream.
class WritePropertyRequestParser : public ServiceRequestParser {
public:
    // Throws FormatErrorException when the object, the property or the value is absent or an element is of
    // the wrong kind, SupportInformationException for a property that is not supported, and what the parser
    // of the value throws.
    std::unique_ptr<ConfirmedServiceRequest> Parse(IStreamBase& stream) const override;
};
