#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "CPropertyValue.h"
#include "ConfirmedServiceAck.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "ServiceAckParser.h"

// ReadPropertyMultiple-ACK (ASHRAE 135 clause 15.7) for one object: its values by property.
class ReadPropertyMultipleAck : public ConfirmedServiceAck {
public:
    // Ordered by property number; the map owns the values.
    using Values = std::map<PropertyIdentifierEnum, std::unique_ptr<CPropertyValue>>;

    ReadPropertyMultipleAck() = default;
    // Stores the object only. Does not take the value.
    ReadPropertyMultipleAck(ObjectIdentifier object, PropertyIdentifierEnum property, CPropertyValue* value,
                            int arrayIndex);

    // No octets: the client never sends one.
    std::vector<char> GetBytes() const override;

    // Compares the objects; the values take no part. Throws std::bad_cast for an ack of another class.
    int Compare(ConfirmedServiceAck& other) const override;

    ObjectIdentifier GetObjectId() const { return objectId; }
    void SetObjectId(ObjectIdentifier value) { objectId = value; }
    Values const& GetValues() const { return values; }
    // Destroys a value that the property had before.
    void SetValue(PropertyIdentifierEnum property, std::unique_ptr<CPropertyValue> value) {
        values[property] = std::move(value);
    }

private:
    ObjectIdentifier objectId{};
    Values values;
};

// Reads the list of results as pairs of sub-tags, property and wrapped value, by their place alone. So an
// array index shifts the pairs, and a property's error is read as its value. Of several objects the last one
// counts, and of the list only as many sub-tags as the low eight bits of its size tell. All this is on
// purpose.
class ReadPropertyMultipleAckParser : public ServiceAckParser {
public:
    // Throws FormatErrorException when the object or the list is absent or of the wrong kind, when a sub-tag
    // in a property's place is constructed, and when a wrapper is missing or primitive;
    // SupportInformationException for a pair that the support table does not hold; and what the value's
    // parser throws. In each case the values already read are lost.
    std::unique_ptr<ConfirmedServiceAck> Parse(IStreamBase& stream) const override;
};
