#pragma once

#include "IntValue.h"
#include "PropertyValueParser.h"
#include "ScheduleValue.h"

// Weekly_Schedule (property 123, ASHRAE 135 clause 12.24) as the host writes it: seven day fields, Monday
// first, each closed by ";" and each empty or a list of entries as ScheduleValue has them:
//
//     "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;"
class WeeklyScheduleValue : public ScheduleValue {
public:
    WeeklyScheduleValue() = default;
    WeeklyScheduleValue(std::string text, EncodingTypeEnum textEncoding);

    // Seven constructed tags of number 0, one a day.
    std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const override;
    int Compare(CPropertyValue& other) const override;
};

// Turns a Weekly_Schedule into its text, as a CharacterStringValue of the encoding Schedule. All its
// failures are ParseException. The text is not always what makes the same schedule again: an Unsigned has a
// "d" behind its digits, a Null is left out, and unspecified fields of dates come out as digits.
class WeeklyScheduleValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

private:
    IntValueParser intParser;
};
