#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "AnswerStore.h"
#include "CPropertyValue.h"
#include "ConfirmedServiceAck.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"
#include "ServiceAckParser.h"

// ReadPropertyMultiple-ACK (ASHRAE 135 clause 15.7) for one object: its values by property. It owns them.
class ReadPropertyMultipleAck : public ConfirmedServiceAck {
public:
    // Ordered by property number; the map owns the values.
    using Values =
        std::map<PropertyIdentifierEnum, std::unique_ptr<CPropertyValue>, std::less<PropertyIdentifierEnum>,
                 AnswerAllocator<std::pair<PropertyIdentifierEnum const, std::unique_ptr<CPropertyValue>>>>;

    ReadPropertyMultipleAck() = default;
    // Stores the object only. Does not take ownership of the value.
    ReadPropertyMultipleAck(ObjectIdentifier object, PropertyIdentifierEnum property, CPropertyValue* value,
                            int arrayIndex);

    // No octets: the client never sends one.
    std::vector<char> GetBytes() const override;

    // Compares the objects, not the values. Throws std::bad_cast for an ack of another class.
    int Compare(ConfirmedServiceAck& other) const override;

    ObjectIdentifier GetObjectId() const { return objectId; }
    void SetObjectId(ObjectIdentifier value) { objectId = value; }
    Values const& GetValues() const { return values; }
    // Destroys the previous value of the property.
    void SetValue(PropertyIdentifierEnum property, std::unique_ptr<CPropertyValue> value) {
        values[property] = std::move(value);
    }

private:
    ObjectIdentifier objectId{};
    Values values;
};

// Reads the list of results as pairs of sub-tags, property and wrapped value, by their index alone.
// Departures from ASHRAE 135 clause 21, ReadAccessResult, on which installed systems rely:
//
// - an array index shifts the pairs;
// - the error of a property is read as its value;
// - of several objects only the last one is kept;
// - of the list only as many sub-tags are read as the low eight bits of its size say.
class ReadPropertyMultipleAckParser : public ServiceAckParser {
public:
    // Throws FormatErrorException when the object or the list is absent or of the wrong kind, when the
    // sub-tag of a property is constructed, and when a wrapper is missing or primitive;
    // SupportInformationException for a pair outside the support table; and what the parser of the value
    // throws. An exception discards the values read before.
    std::unique_ptr<ConfirmedServiceAck> Parse(IStreamBase& stream) const override;
};
