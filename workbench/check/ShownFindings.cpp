#include "BlockView.h"
#include "FindingFamilies.h"
#include "Printable.h"
#include "ShownValue.h"
#include "Suggestion.h"
#include "Units.h"

namespace workbench {

namespace {

void FindUnit(BlockConfig const& block, VariableConfig const& variable, Findings& findings) {
    if (variable.unit.empty()) {
        return;
    }
    if (!HasUnit(variable)) {
        findings.push_back(
            OfVariable(FindingCode::UnitNotShown, block, variable, "Unit",
                       tools::Quoted(variable.unit) + " is not shown: the values of " + ObjectText(variable) +
                           " " + variable.property->name + " are " +
                           (StatesOf(variable) == States::None ? "no numbers" : "states, not quantities")));
        return;
    }
    std::string const near =
        UnitOfName(variable.unit) ? std::string() : tools::Nearest(variable.unit, UnitsByName());
    if (!near.empty()) {
        findings.push_back(OfVariable(FindingCode::SimilarUnit, block, variable, "Unit",
                                      tools::Quoted(variable.unit) +
                                          " is not a unit of the standard, and is shown as it is" +
                                          tools::Suggest(near)));
    }
}

void FindStateTexts(BlockConfig const& block, VariableConfig const& variable, Findings& findings) {
    std::size_t const count = variable.stateTexts.size();
    if (count == 0) {
        return;
    }
    States const states = StatesOf(variable);
    if (states == States::None) {
        findings.push_back(OfVariable(FindingCode::StateTextsNotShown, block, variable, "StateTexts",
                                      "the texts are not shown: " + ObjectText(variable) + " " +
                                          variable.property->name + " has no states"));
    } else if (states == States::FromZero && count != 2) {
        findings.push_back(OfVariable(
            FindingCode::StateTextsMissing, block, variable, "StateTexts",
            "a binary object has two states, inactive and active, and not " + std::to_string(count)));
    }
}

}  // namespace

void FindShown(BlockConfig const& block, Findings& findings) {
    for (VariableConfig const& variable : block.variables) {
        FindUnit(block, variable, findings);
        FindStateTexts(block, variable, findings);
    }
}

}  // namespace workbench
