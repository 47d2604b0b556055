#include "PropertyChoice.h"

#include <algorithm>
#include <cstddef>

#include "ObjectType.h"

namespace workbench {

namespace {

using P = standard::PropertyId;

constexpr std::size_t MostProperties = 1000;

constexpr P ShownOfObject[] = {P::Description,  P::Present_Value, P::Status_Flags,  P::Units,
                               P::Output_Units, P::State_Text,    P::Inactive_Text, P::Active_Text};
constexpr P ShownOfDevice[] = {P::Vendor_Name,
                               P::Vendor_Identifier,
                               P::Model_Name,
                               P::Firmware_Revision,
                               P::Application_Software_Version,
                               P::Description,
                               P::Location,
                               P::System_Status,
                               P::Protocol_Revision,
                               P::Max_APDU_Length_Accepted,
                               P::Segmentation_Supported,
                               P::Database_Revision};
constexpr P UsualOnes[] = {P::Description, P::Present_Value,  P::Status_Flags, P::Event_State,
                           P::Reliability, P::Out_Of_Service, P::Units,        P::Profile_Name};
// Their values are in the answers already, or are read in their own way.
constexpr P LeftOut[] = {P::Object_Identifier, P::Object_Type, P::Object_List, P::Property_List};

template <class Range>
bool Has(Range const& range, std::uint32_t property) {
    return std::any_of(std::begin(range), std::end(range),
                       [&](P id) { return static_cast<std::uint32_t>(id) == property; });
}

constexpr std::uint16_t DeviceType = 8;

standard::ObjectType const* TableOf(std::uint16_t objectType) {
    if (objectType == DeviceType) {
        return &standard::DeviceObjectType();
    }
    for (standard::ObjectType const& type : standard::AllObjectTypes()) {
        if (type.code == objectType) {
            return &type;
        }
    }
    return nullptr;
}

bool IsShown(std::uint16_t objectType, std::uint32_t property) {
    return objectType == DeviceType ? Has(ShownOfDevice, property) : Has(ShownOfObject, property);
}

void Add(std::vector<std::uint32_t>& properties, std::uint32_t property) {
    bool const isNew = std::find(properties.begin(), properties.end(), property) == properties.end();
    if (isNew && !Has(LeftOut, property)) {
        properties.push_back(property);
    }
}

}  // namespace

std::vector<std::uint32_t> PropertiesOfType(std::uint16_t objectType, Detail detail) {
    std::vector<std::uint32_t> properties = {static_cast<std::uint32_t>(P::Object_Name)};
    auto const add = [&](P id) {
        auto const property = static_cast<std::uint32_t>(id);
        if (detail == Detail::Every || IsShown(objectType, property)) {
            Add(properties, property);
        }
    };
    standard::ObjectType const* const type = TableOf(objectType);
    if (!type) {
        std::for_each(std::begin(UsualOnes), std::end(UsualOnes), add);
        return properties;
    }
    for (standard::PropertyRows const& group : type->groups) {
        for (standard::PropertyRow const& row : group) {
            add(row.id);
        }
    }
    return properties;
}

std::vector<std::uint32_t> PropertiesOfList(std::vector<standard::Datum> const& propertyList) {
    std::vector<std::uint32_t> properties = {static_cast<std::uint32_t>(P::Object_Name)};
    for (standard::Datum const& datum : propertyList) {
        bool const isProperty = datum.kind == standard::DatumKind::Enumerated && datum.number <= 0x3FFFFF;
        if (isProperty && properties.size() < MostProperties) {
            Add(properties, static_cast<std::uint32_t>(datum.number));
        }
    }
    return properties;
}

}  // namespace workbench
