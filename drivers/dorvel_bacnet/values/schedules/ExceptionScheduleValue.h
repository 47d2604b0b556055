#pragma once

#include <string>
#include <vector>

#include "PropertyValueParser.h"
#include "ScheduleValue.h"

// Exception_Schedule (property 38, ASHRAE 135 clause 12.24) as the host writes it: a list of special events,
// each ended by ";":
//
//     period "," priority "," entries
//
// The period is one of
//
//     "0," date            a date as in an entry of type 10
//     "1," date "," date   from the first date to the second
//     "2," mmwd            month, week of the month, day of the week; "*" is any, as is 0
//     "3," instance        the dates of that Calendar object
//
// and the entries are those of ScheduleValue, except that a Null is a time followed by "," only:
//
//     "3,7,10,08000000,4,9,20.000000;2,**12,5,12000000,,13000000,9,1,1;"
//
// Departure from clause 21, BACnetWeekNDay: "any" is sent as 0 and not as 255. Installed systems rely on
// this.
class ExceptionScheduleValue : public ScheduleValue {
public:
    ExceptionScheduleValue() = default;
    ExceptionScheduleValue(std::string text, EncodingTypeEnum textEncoding);

    // Three tags per event: period, list of times and values, priority. An event with an unknown period gives
    // one tag, a priority of 0.
    std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const override;
    int Compare(CPropertyValue& other) const override;

    // The field at an index. A field that is missing or empty throws std::runtime_error.
    static std::string gfv(std::vector<std::string> const& fields, int index);

private:
    static std::unique_ptr<TagBase> Period(int form, std::vector<std::string> const& fields);
    static std::unique_ptr<TagBase> Entries(std::vector<std::string> const& fields, int index);
};

// Converts an Exception_Schedule to its text, a CharacterStringValue with the encoding Schedule. The text is
// empty if the number of tags is not a multiple of three. Tags of another shape than a special event throw
// ParseException, except that a constructed period without exactly one sub-tag is read as calendar 0. An
// event without entries gives no text and removes the ";" before it.
class ExceptionScheduleValueParser : public PropertyValueParser {
public:
    std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const override;
};
