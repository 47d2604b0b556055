#pragma once

#include <optional>
#include <string>
#include <vector>

#include "DeviceValue.h"
#include "PropertyTypeEnum.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// The value that a variable has if nothing of the device's value is lost on the way.
struct FaithfulValue {
    std::optional<OpcUa_VariantHlp> value;  // of the declared type; none if it cannot have one
    std::string loss;                       // what the declared type loses of it, or why there is none
};

// The device's value in a variable of this type, by the conversion rules of the host. type is the driver's
// type of the property; localDiff as in TimeText.h.
FaithfulValue Faithful(DeviceValue const& value, PropertyTypeEnum type, _OpcUa_BuiltInType declared,
                       long long localDiff);

// What the driver's decoding can make of the device's octets where it departs from ASHRAE 135: octets of
// another datatype, signed values without sign extension, 64 bits cut to 32. More than one value where the
// number of octets, which the device chooses, decides. Values of the declared type.
std::vector<OpcUa_VariantHlp> Decoded(DeviceValue const& value, PropertyTypeEnum type,
                                      _OpcUa_BuiltInType declared);
// The reason of such a departure, in words.
std::string DecodingLoss(DeviceValue const& value, PropertyTypeEnum type);

// Why the driver's text is another one than the device's, if the device does not send UTF-8; otherwise empty.
std::string CharacterSetLoss(DeviceValue const& value, OpcUa_Variant const& driver);

// The driver's name of the type, as "Real".
char const* PropertyTypeName(PropertyTypeEnum type);

}  // namespace workbench
