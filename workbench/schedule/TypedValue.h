#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ScheduleModel.h"
#include "ValueNames.h"

namespace workbench {

// Values, and the division of texts, in the form that people type (ScheduleForPeople.h).

// The message names the text, what is allowed, and an example.
class TypingMistake : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The value with its type's name where it needs one, its unit and its state text. What is written is read as
// the same value with the same names.
std::string TypedText(ScheduleValue const& value, ValueNames const& names);
// Throws TypingMistake.
ScheduleValue TypedValueOf(std::string_view text, ValueNames const& names);

std::string_view WithoutBlanks(std::string_view text);  // at its ends
// The parts between the delimiters, but for those within quotation marks.
std::vector<std::string_view> SplitOutsideQuotes(std::string_view text, char delimiter);

}  // namespace workbench
