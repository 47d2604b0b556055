#pragma once

#include <optional>
#include <string>

#include "EdeObject.h"

namespace workbench {

// Gives the object the texts of its states: by the number in the column state-text-reference, by texts in
// that column ("off|on", "1=off,2=on"), or by texts in columns of their own. A multi-state object gets
// State_Text and Number_Of_States, a binary one Inactive_Text and Active_Text.
void SetStateTexts(EdeRow const& row, CodeTexts const& stateTexts, ObjectRecord& object);

// The same for the texts of a project, which are empty where it has none.
void SetStateTexts(std::vector<std::string> const& texts, ObjectRecord& object);

// The value of the state that has this text; no value if none or several have it.
std::optional<standard::Datum> StateOf(ObjectRecord const& object, std::string const& text);

}  // namespace workbench
