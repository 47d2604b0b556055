#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "CPropertyValue.h"
#include "ConfirmedServiceAck.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "ServiceAckParser.h"

// ReadProperty-ACK (ASHRAE 135 clause 15.5). It owns its value. The client parses it but never requests it: a
// poll uses ReadPropertyMultiple.
class ReadPropertyAck : public ConfirmedServiceAck {
public:
    // No index, property 0, no value.
    ReadPropertyAck() = default;
    // Takes ownership of the value. A negative arrayIndex means that there is none.
    ReadPropertyAck(ObjectIdentifier object, PropertyIdentifierEnum property, CPropertyValue* value,
                    int arrayIndex);

    // Object; property (low eight bits); the index in four octets if present; ToApplicationTags() of the
    // value between the opening and closing tag 3. Without a value that is 3E 3F.
    std::vector<char> GetBytes() const override;

    // Compares object, property, presence of the index, index and value, in this order. An ack without a
    // value sorts before one with a value. Throws std::bad_cast for an ack of another class and for values of
    // different classes.
    int Compare(ConfirmedServiceAck& other) const override;

    bool HasPropertyArrayIndex() const { return hasPropertyArrayIndex; }
    // 0 when there is none.
    int GetPropertyArrayIndex() const { return propertyArrayIndex; }
    // The index becomes present.
    void SetPropertyArrayIndex(int arrayIndex);
    PropertyIdentifierEnum GetPropertyIdentifier() const { return propertyIdentifier; }
    void SetPropertyIdentifier(PropertyIdentifierEnum value) { propertyIdentifier = value; }
    ObjectIdentifier GetObjectId() const { return objectId; }
    void SetObjectId(ObjectIdentifier value) { objectId = value; }
    // Null when there is none. This object keeps the ownership.
    CPropertyValue* GetPropertyValue() const { return propertyValue.get(); }
    // Destroys the value that was there.
    void SetPropertyValue(std::unique_ptr<CPropertyValue> value) { propertyValue = std::move(value); }

private:
    int propertyArrayIndex = 0;
    bool hasPropertyArrayIndex = false;
    PropertyIdentifierEnum propertyIdentifier{};
    ObjectIdentifier objectId{};
    std::unique_ptr<CPropertyValue> propertyValue;
};

class ReadPropertyAckParser : public ServiceAckParser {
public:
    // Throws FormatErrorException when the object, the property or the value is absent or of the wrong kind,
    // SupportInformationException for a pair outside the support table, and what the parser of the value
    // throws. The lookup of the pair comes before the check of the value's tag.
    std::unique_ptr<ConfirmedServiceAck> Parse(IStreamBase& stream) const override;
};
