#include "ReadPropertyMultipleRequest.h"

#include <utility>

#include "ServiceElements.h"

namespace {

constexpr char OpeningList = 0x1E;
constexpr char ClosingList = 0x1F;
constexpr char PropertyTag = 0x09;

}  // namespace

ReadPropertyMultipleRequest::ReadPropertyMultipleRequest(ObjectIdentifier object,
                                                         std::vector<PropertyIdentifierEnum> requested)
    : properties(std::move(requested)), objectId(object) {}

std::vector<char> ReadPropertyMultipleRequest::GetBytes() const {
    std::vector<char> octets = ObjectBytes(objectId);
    octets.reserve(octets.size() + 2 + 2 * properties.size());
    octets.push_back(OpeningList);
    for (PropertyIdentifierEnum const property : properties) {
        octets.push_back(PropertyTag);
        octets.push_back(static_cast<char>(property));
    }
    octets.push_back(ClosingList);
    return octets;
}
