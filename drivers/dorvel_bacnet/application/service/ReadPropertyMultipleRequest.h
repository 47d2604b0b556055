#pragma once

#include <vector>

#include "ConfirmedServiceRequest.h"
#include "ObjectIdentifier.h"
#include "PropertyIdentifierEnum.h"

// ReadPropertyMultiple-Request (ASHRAE 135 clause 15.7) for one object, without array indices. Each poll of
// an object sends one.
class ReadPropertyMultipleRequest : public ConfirmedServiceRequest {
public:
    ReadPropertyMultipleRequest() = default;
    ReadPropertyMultipleRequest(ObjectIdentifier object, std::vector<PropertyIdentifierEnum> requested);

    // Context tag 0 with the object; then, between the opening and closing tag 1, 09 and one octet for each
    // property, in the order of the list. Departure from clause 20.2.11: only the low eight bits of a
    // property above 255 are sent. Installed systems rely on this.
    std::vector<char> GetBytes() const override;

private:
    std::vector<PropertyIdentifierEnum> properties;
    ObjectIdentifier objectId{};
};
