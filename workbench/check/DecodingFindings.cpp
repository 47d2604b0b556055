#include <algorithm>

#include "BlockView.h"
#include "FindingFamilies.h"

namespace workbench {

namespace {

using Variables = std::vector<VariableConfig const*>;

bool IsDecoded(VariableConfig const& variable) {
    return DecodedAs(AddressOf(variable).objectType, SentAs(variable)).has_value();
}

// The variables of the object that get no value only because of others.
std::vector<std::string> TakenAlong(Variables const& object) {
    std::vector<std::string> names;
    for (VariableConfig const* const variable : object) {
        if (IsDecoded(*variable)) {
            names.push_back(variable->name);
        }
    }
    return names;
}

std::string Effect(VariableConfig const& variable, std::vector<std::string> const& taken) {
    std::string const effect = "it drops every answer of " + ObjectText(variable) + ", without a fault";
    return effect +
           (taken.empty() ? ", and the variable never gets a value"
                          : ", so neither this variable nor " + Listed(taken) + " ever gets a value") +
           (variable.write && !WriteOf(variable).refusal.empty() ? "; its writes are refused" : "");
}

std::string PropertyOfObject(VariableConfig const& variable) {
    return std::string(variable.property->name) + " of " + variable.objectType->name;
}

Finding Undecoded(BlockConfig const& block, VariableConfig const& variable,
                  std::vector<std::string> const& taken) {
    DriverAddress const address = AddressOf(variable);
    bool const isAverage = address.objectType == ObjectTypeEnum::Averaging &&
                           address.property == PropertyIdentifierEnum::Present_Value;
    return OfVariable(
        isAverage ? FindingCode::AveragingPresentValue : FindingCode::NotDecoded, block, variable,
        "ObjectProperties",
        "the driver cannot decode " + PropertyOfObject(variable) + ": " + Effect(variable, taken));
}

Finding SentOtherwise(BlockConfig const& block, VariableConfig const& variable,
                      std::vector<std::string> const& taken) {
    std::string const cause =
        "the driver requests " + NameOf(SentAs(variable)) + " instead of " + variable.property->name;
    std::string const effect = IsDecoded(variable)
                                   ? "the variable never gets a value"
                                   : "it cannot decode that either: " + Effect(variable, taken);
    return OfVariable(FindingCode::SentAsOtherProperty, block, variable, "ObjectProperties",
                      cause + ", and " + effect);
}

void FindInObject(BlockConfig const& block, Variables const& object, Findings& findings) {
    bool const hasFlags =
        DecodedAs(AddressOf(*object.front()).objectType, PropertyIdentifierEnum::Status_Flags).has_value();
    std::vector<std::string> const taken = hasFlags ? TakenAlong(object) : std::vector<std::string>();
    for (VariableConfig const* const variable : object) {
        if (!hasFlags) {
            findings.push_back(OfVariable(
                FindingCode::LightingOutput, block, *variable, "ObjectType",
                std::string(
                    "the driver requests the status flags of every object and cannot decode those of ") +
                    variable->objectType->name + ": " + Effect(*variable, {})));
        } else if (SentAs(*variable) != AddressOf(*variable).property) {
            findings.push_back(SentOtherwise(block, *variable, taken));
        } else if (!IsDecoded(*variable)) {
            findings.push_back(Undecoded(block, *variable, taken));
        }
    }
}

// ASHRAE 135 clause 12.7 has an enumerated here.
void FindMisread(BlockConfig const& block, VariableConfig const& variable, Findings& findings) {
    DriverAddress const address = AddressOf(variable);
    if (address.property == PropertyIdentifierEnum::Feedback_Value &&
        DecodedAs(address.objectType, address.property) == PropertyTypeEnum::Real) {
        findings.push_back(
            OfVariable(FindingCode::MisreadFeedback, block, variable, "ObjectProperties",
                       "the driver reads feedback-value as a Real, and devices send active or inactive: "
                       "the value is 0 or close to 0, with quality Good"));
    }
}

}  // namespace

void FindDecoding(BlockConfig const& block, Findings& findings) {
    for (auto const& object : ObjectsOf(block)) {
        FindInObject(block, object.second, findings);
    }
    for (VariableConfig const& variable : block.variables) {
        FindMisread(block, variable, findings);
    }
}

}  // namespace workbench
