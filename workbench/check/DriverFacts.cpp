#include "DriverFacts.h"

#include <exception>
#include <memory>
#include <stdexcept>

#include "BuildValue.h"
#include "CodeMaps.h"
#include "FormRequest.h"
#include "Network/AddressParser.h"
#include "SupportInformation.h"
#include "TBACnet.h"

namespace workbench {

namespace {

constexpr char DefaultMac[] = "255.255.255.255:47808";

// Octets in front of the property in the APDU of a ReadPropertyMultiple and of a WriteProperty (ASHRAE 135
// clauses 20.1.2 and 21): the header, the object identifier with its tag, an opening tag, the property's tag.
constexpr std::size_t ReadPropertyAt = 4 + 5 + 1 + 1;
constexpr std::size_t WritePropertyAt = 4 + 5 + 1;

std::unique_ptr<dorvel::BACnet::tagReadData> TagOf(VariableConfig const& variable) {
    DriverAddress const driver = AddressOf(variable);
    auto address = std::make_unique<dorvel::BACnet::tagAddress>();
    address->objectNumber = variable.objectNumber;
    address->objectType = driver.objectType;
    address->propertyId = driver.property;
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

DriverAddress AddressOf(VariableConfig const& variable) {
    static bool const filled = [] {
        dorvel::BACnet::InitObjectTypesMap();
        return true;
    }();
    (void)filled;
    return {dorvel::BACnet::GetBacnetObjectType(variable.objectType->code),
            dorvel::BACnet::GetPropertyType(variable.property->code)};
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

PropertyIdentifierEnum SentAs(VariableConfig const& variable) {
    auto const tag = TagOf(variable);
    char invokeId = 0;
    return PropertyIn(dorvel::BACnet::FormMessage(invokeId, {tag.get()}), ReadPropertyAt);
}

DriverWrite WriteOf(VariableConfig const& variable) {
    static SilentClient silent;
    auto const tag = TagOf(variable);
    DriverAddress const address = AddressOf(variable);
    auto const type = DecodedAs(address.objectType, address.property);
    try {
        OpcUa_VariantHlp const value = Writable(type.value_or(PropertyTypeEnum::Real));
        return {"", PropertyIn(silent.client.FormWriteMessage(*tag, 1, value), WritePropertyAt)};
    } catch (std::runtime_error const& refusal) {
        return {refusal.what(), {}};
    }
}

std::vector<char> AddressOctets(std::string const& text) {
    return Network::AddressParser::ParseAddress(text);
}

std::vector<char> DefaultMacOctets() {
    return AddressOctets(DefaultMac);
}

int AnswerTime() {
    return dorvel::BACnet::TBACnet::ReceiveTimeout;
}

}  // namespace workbench
