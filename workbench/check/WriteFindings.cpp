#include <stdexcept>

#include "BlockView.h"
#include "BuildValue.h"
#include "FindingFamilies.h"
#include "ShownValue.h"

namespace workbench {

namespace {

constexpr long long HighestPriority = 1;
constexpr long long LowestPriority = 16;

void FindTarget(BlockConfig const& block, VariableConfig const& variable, DriverWrite const& write,
                Findings& findings) {
    if (!write.refusal.empty()) {
        findings.push_back(OfVariable(FindingCode::WriteRefused, block, variable, "Write",
                                      std::string("the driver cannot write ") + variable.property->name +
                                          " of " + variable.objectType->name + ": every write ends with \"" +
                                          write.refusal + "\""));
    } else if (write.property != AddressOf(variable).property) {
        findings.push_back(OfVariable(FindingCode::WriteOtherProperty, block, variable, "Write",
                                      std::string("the driver reads ") + variable.property->name +
                                          " and writes to " + NameOf(write.property)));
    }
}

// The tag that is written; empty if nothing is.
std::vector<char> Written(PropertyTypeEnum type, OpcUa_VariantHlp const& value) {
    try {
        return dorvel::BACnet::BuildValue(type, value, 0)->ToApplicationTag().GetBytes();
    } catch (std::runtime_error const&) {
        return {};
    }
}

void FindText(BlockConfig const& block, VariableConfig const& variable, PropertyTypeEnum type,
              Findings& findings) {
    OpcUa_VariantHlp text;
    text.SetUTF8String("a text");
    OpcUa_VariantHlp zero;
    zero.SetInt(0);
    std::vector<char> const written = Written(type, text);
    if (ValueType(variable) == OpcUaType_String && !written.empty() && written == Written(type, zero)) {
        findings.push_back(
            OfVariable(FindingCode::WriteText, block, variable, "Write",
                       "the driver converts the text that is written: one that is not such a value, a "
                       "decimal comma for instance, is written as 0"));
    }
}

// The driver writes no octet of 0 in front of an octet from 80 to FF (ASHRAE 135 clause 20.2.5).
void FindSign(BlockConfig const& block, VariableConfig const& variable, PropertyTypeEnum type,
              Findings& findings) {
    bool const isSmall = ValueType(variable) == OpcUaType_SByte || ValueType(variable) == OpcUaType_Boolean;
    if (type == PropertyTypeEnum::Signed && !isSmall) {
        findings.push_back(
            OfVariable(FindingCode::WriteSign, block, variable, "Write",
                       "the driver writes positive numbers without a sign octet: a device reads 200 as "
                       "-56, and so all from 128 to 255, from 32768 to 65535 and from 8388608 to "
                       "16777215"));
    }
}

void FindPriority(BlockConfig const& block, VariableConfig const& variable, DriverWrite const& write,
                  Findings& findings) {
    long long const priority = NumberOf(block, "Priority", 0);
    bool const isSent = priority >= HighestPriority && priority <= LowestPriority;
    if (isSent && write.property != PropertyIdentifierEnum::Present_Value) {
        findings.push_back(
            OfVariable(FindingCode::PriorityWithoutEffect, block, variable, "Write",
                       "writes of " + NameOf(write.property) + " have the Priority of the block, " +
                           std::to_string(priority) +
                           ", which has no meaning there; some devices answer them with an error"));
    }
}

}  // namespace

void FindWrites(BlockConfig const& block, Findings& findings) {
    for (VariableConfig const& variable : block.variables) {
        DriverAddress const address = AddressOf(variable);
        auto const type = DecodedAs(address.objectType, address.property);
        // What cannot be decoded has a finding already.
        if (!variable.write || !type) {
            continue;
        }
        DriverWrite const write = WriteOf(variable);
        FindTarget(block, variable, write, findings);
        if (write.refusal.empty()) {
            FindText(block, variable, *type, findings);
            FindSign(block, variable, *type, findings);
            FindPriority(block, variable, write, findings);
        }
    }
}

}  // namespace workbench
