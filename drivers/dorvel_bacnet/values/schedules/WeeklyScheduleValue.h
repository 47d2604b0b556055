#pragma once

#include "IntValue.h"
#include "PropertyValueParser.h"
#include "ScheduleValue.h"

// Weekly_Schedule (property 123, ASHRAE 135 clause 12.24) as the host writes it: seven day fields, Monday
// first, each ended by ";" and each empty or a list of entries of ScheduleValue:
//
//     "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;"
class WeeklyScheduleValue : public ScheduleValue {
public:
    WeeklyScheduleValue() = default;
    WeeklyScheduleValue(std::string text, EncodingTypeEnum textEncoding);

    // Seven constructed tags with number 0, one per day.
    std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const override;
    int Compare(CPropertyValue& other) const override;
};

// Converts a Weekly_Schedule to its text, a CharacterStringValue with the encoding Schedule. Tags of another
// shape throw ParseException. Writing the text back does not always give the same schedule: an Unsigned has a
// "d" after its digits, a Null is left out, and unspecified fields of dates are digits.
class WeeklyScheduleValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;

private:
    IntValueParser intParser;
};
