#include "DriverTables.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "CodeMaps.h"
#include "FormRequest.h"
#include "SupportInformation.h"
#include "TBACnet.h"

namespace workbench {

namespace {

// Octets in front of the property in the APDU of a ReadPropertyMultiple and of a WriteProperty (ASHRAE 135
// clauses 20.1.2 and 21): the header, the object identifier with its tag, an opening tag, the property's tag.
constexpr std::size_t ReadPropertyAt = 4 + 5 + 1 + 1;
constexpr std::size_t WritePropertyAt = 4 + 5 + 1;

template <typename Number>
bool IsAmong(std::map<int, Number> const& codes, Number number) {
    return std::any_of(codes.begin(), codes.end(),
                       [number](auto const& row) { return row.second == number; });
}

std::unique_ptr<dorvel::BACnet::tagReadData> TagOf(ObjectTypeEnum objectType,
                                                   PropertyIdentifierEnum property) {
    auto address = std::make_unique<dorvel::BACnet::tagAddress>();
    address->objectType = objectType;
    address->propertyId = property;
    auto tag = std::make_unique<dorvel::BACnet::tagReadData>();
    tag->address = address.release();
    return tag;
}

PropertyIdentifierEnum PropertyIn(std::vector<char> const& apdu, std::size_t position) {
    return static_cast<PropertyIdentifierEnum>(static_cast<unsigned char>(apdu.at(position)));
}

// A value that the driver writes as this type, if it writes the type at all.
OpcUa_VariantHlp Writable(PropertyTypeEnum type) {
    OpcUa_VariantHlp value;
    switch (type) {
        case PropertyTypeEnum::Weekly_Schedule:
            value.SetUTF8String(";;;;;;;");
            break;
        case PropertyTypeEnum::Exception_Schedule:
            value.SetUTF8String("3,7,10,08000000,4,9,20.000000;");
            break;
        default:
            value.SetTime(133'485'408'000'000'000);
            break;
    }
    return value;
}

// A client for its messages only: it gets no address and sends nothing.
struct SilentClient {
    NLSocket socket{};
    dorvel::BACnet::TBACnet client{socket, nullptr, 0, "", "", 0, 1, 0, 0, 0};
};

}  // namespace

bool HasCode(ObjectTypeEnum objectType) {
    dorvel::BACnet::InitObjectTypesMap();
    return IsAmong(dorvel::BACnet::objectTypesMap, objectType);
}

bool HasCode(PropertyIdentifierEnum property) {
    dorvel::BACnet::InitObjectTypesMap();
    return IsAmong(dorvel::BACnet::propertyTypesMap, property);
}

std::optional<PropertyTypeEnum> DecodedAs(ObjectTypeEnum objectType, PropertyIdentifierEnum property) {
    SupportInformation const& support = *SupportInformation::GetInstance();
    try {
        PropertyTypeEnum const type = support.GetPropertyInfo(objectType, property).type;
        return support.GetPropertyParser(type) ? std::optional(type) : std::nullopt;
    } catch (SupportInformationException const&) {
        return std::nullopt;
    }
}

PropertyIdentifierEnum SentAs(ObjectTypeEnum objectType, PropertyIdentifierEnum property) {
    auto const tag = TagOf(objectType, property);
    char invokeId = 0;
    return PropertyIn(dorvel::BACnet::FormMessage(invokeId, {tag.get()}), ReadPropertyAt);
}

DriverWrite WriteOf(ObjectTypeEnum objectType, PropertyIdentifierEnum property) {
    static SilentClient silent;
    auto const tag = TagOf(objectType, property);
    auto const type = DecodedAs(objectType, property);
    try {
        OpcUa_VariantHlp const value = Writable(type.value_or(PropertyTypeEnum::Real));
        return {"", PropertyIn(silent.client.FormWriteMessage(*tag, 1, value), WritePropertyAt)};
    } catch (std::runtime_error const& refusal) {
        return {refusal.what(), {}};
    }
}

}  // namespace workbench
