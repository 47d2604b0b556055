#include "BlockView.h"
#include "ConversionTrial.h"
#include "FindingFamilies.h"
#include "Printable.h"
#include "ShownValue.h"
#include "TypeName.h"

namespace workbench {

namespace {

constexpr long long LargestUnsigned = 4294967295;
// More states than a device has; ASHRAE 135 limits only their number to that of an Unsigned.
constexpr long long LargestState = 1000;
// Enumerations of ASHRAE 135 clause 23.1 end there.
constexpr long long LargestEnumeration = 65535;

// The largest number to expect of an object's property.
long long LargestOf(DriverAddress const& address, PropertyTypeEnum type) {
    if (type == PropertyTypeEnum::Polarity) {
        return 1;
    }
    if (type != PropertyTypeEnum::Unsigned) {
        return LargestEnumeration;
    }
    switch (address.objectType) {
        case ObjectTypeEnum::Multi_State_Input:
        case ObjectTypeEnum::Multi_State_Output:
        case ObjectTypeEnum::Multi_State_Value:
            return LargestState;
        default:
            return LargestUnsigned;
    }
}

// The field that declares the type of the value.
char const* TypeField(VariableConfig const& variable) {
    return variable.type.Type == OpcUaType_DataValue ? "ElementType" : "Type";
}

std::string Property(VariableConfig const& variable) {
    return std::string(variable.property->name) + " of " + ObjectText(variable);
}

void FindConversion(BlockConfig const& block, VariableConfig const& variable, PropertyTypeEnum type,
                    Findings& findings) {
    using Result = ConversionTrial::Result;
    _OpcUa_BuiltInType const target = ValueType(variable);
    ConversionTrial const& trial = TryConversion(type, LargestOf(AddressOf(variable), type), target);
    std::string const example = tools::Printable(trial.example);
    FindingCode code{};
    std::string message;
    switch (trial.result) {
        case Result::Exact:
            return;
        case Result::Changes:
            code = FindingCode::LosesInformation;
            message = Property(variable) + " does not fit into " + TypeName(target) +
                      " unchanged: " + example + " becomes " + tools::Printable(trial.becomes);
            break;
        case Result::Sometimes:
            code = FindingCode::MayNotConvert;
            message = "not every value of " + Property(variable) + " can be converted to " +
                      TypeName(target) + ": with " + example + " the variable is empty";
            break;
        case Result::Never:
            code = FindingCode::NeverConverts;
            message = Property(variable) + " cannot be converted to " + TypeName(target) +
                      ": the variable never gets a value";
            break;
    }
    findings.push_back(OfVariable(code, block, variable, TypeField(variable), message));
}

// A type of 32 bits or fewer shows the limit itself.
bool ShowsNoLimit(_OpcUa_BuiltInType type) {
    return type == OpcUaType_Int64 || type == OpcUaType_UInt64 || type == OpcUaType_Float ||
           type == OpcUaType_Double || type == OpcUaType_String;
}

void FindCut(BlockConfig const& block, VariableConfig const& variable, PropertyTypeEnum type,
             Findings& findings) {
    _OpcUa_BuiltInType const target = ValueType(variable);
    bool const isCount =
        type == PropertyTypeEnum::Signed || LargestOf(AddressOf(variable), type) == LargestUnsigned;
    if (isCount && ShowsNoLimit(target) && IsCutTo32Bits(type)) {
        std::string const first = type == PropertyTypeEnum::Signed ? "2147483648" : "4294967296";
        findings.push_back(OfVariable(FindingCode::CountCut, block, variable, TypeField(variable),
                                      "the driver delivers the low 32 bits of " + Property(variable) +
                                          ": from " + first + " on the value is another one, and " +
                                          TypeName(target) + " does not show it"));
    }
}

void FindSign(BlockConfig const& block, VariableConfig const& variable, PropertyTypeEnum type,
              Findings& findings) {
    if (type == PropertyTypeEnum::Signed) {
        findings.push_back(
            OfVariable(FindingCode::SignNotRead, block, variable, "ObjectType",
                       "the driver does not extend the sign of a short number: -5, which a device sends "
                       "in one octet, is read as 251"));
    }
}

}  // namespace

void FindConversions(BlockConfig const& block, Findings& findings) {
    for (VariableConfig const& variable : block.variables) {
        DriverAddress const address = AddressOf(variable);
        auto const type = DecodedAs(address.objectType, address.property);
        bool const isRead = type && SentAs(variable) == address.property &&
                            DecodedAs(address.objectType, PropertyIdentifierEnum::Status_Flags);
        if (isRead) {
            FindConversion(block, variable, *type, findings);
            FindCut(block, variable, *type, findings);
            FindSign(block, variable, *type, findings);
        }
        if (variable.type.Type != OpcUaType_DataValue) {
            findings.push_back(
                OfVariable(FindingCode::NoQuality, block, variable, "Type",
                           TypeName(variable.type) +
                               " has no quality: when the device does not answer, the variable keeps its "
                               "last value, and nothing marks it as old"));
        }
    }
}

}  // namespace workbench
