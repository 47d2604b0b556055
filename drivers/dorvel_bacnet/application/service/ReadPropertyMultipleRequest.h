#pragma once

#include <vector>

#include "ConfirmedServiceRequest.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"

// ReadPropertyMultiple-Request (ASHRAE 135 clause 15.7) for one object, without array indices.
class ReadPropertyMultipleRequest : public ConfirmedServiceRequest {
public:
    ReadPropertyMultipleRequest() = default;
    ReadPropertyMultipleRequest(ObjectIdentifier object, std::vector<PropertyIdentifierEnum> requested);

    // Context tag 0 with the object, then between the opening and closing tag 1, for each property in the
    // order of the list, 09 and the low eight bits of its number. Properties above 255 are cut on purpose.
    std::vector<char> GetBytes() const override;

private:
    std::vector<PropertyIdentifierEnum> properties;
    ObjectIdentifier objectId{};
};
