#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ComplexTag.h"
#include "TextValue.h"

// The common base of the weekly and the exception schedule (ASHRAE 135 clause 12.24) for writing: a text that
// becomes constructed tags. Both consist of entries of four fields, separated by ",":
//
//     time "," type "," length "," value
//
// The time has eight digits: hour, minute, second, hundredths. The type is the number of an application tag.
// The length is the number of characters of the value and must be a number, but it matters for two types
// only:
//
//     type                  value
//     1  Boolean            0 is false, any other number true
//     2  Unsigned           sent as 0 if 0, else as 1
//     3  Signed             sent as 0 if 0, else as 1
//     4  Real, 5 Double     a number
//     6  Octet String       hexadecimal digits, two per octet
//     7  Character String   the text, which can hold neither "," nor ";"
//     8  Bit String         one digit per bit, the first bit first
//     9  Enumerated         a number
//     10 Date               weekday, day, month, year as in "315032024"; a field starting with "*" is any
//     11 Time               eight digits as in the time of an entry; the length must be 8
//     12 Object Identifier  the instance; the length field holds the object type
//
// Any other type is sent as a Null. Unsigned and Signed values lose their number on the way: installed
// systems rely on this.
//
// The text is checked when the tags are made, not before. A text that does not follow the grammar then throws
// std::runtime_error; a field that is not a number throws std::invalid_argument or std::out_of_range ("stoi",
// "stod").
class ScheduleValue : public TextValue {
public:
    // Throws std::runtime_error: a schedule is never one tag.
    Tag ToApplicationTag() const override;
    // Empty, so the writer uses ToApplicationComplexTags().
    std::vector<Tag> ToApplicationTags() const override;

    // The time tag of an entry, from at least eight characters.
    static Tag ToTimeTag(std::string const& time);
    // The value tag of an entry, from its last three fields. It is a primitive tag.
    static Tag ToComplexTag(std::string const& type, std::string const& length, std::string const& text);

protected:
    ScheduleValue() = default;
    ScheduleValue(std::string text, EncodingTypeEnum textEncoding, int dayCount);

private:
    // Empty tags, one for each day. Nothing reads them: each writing makes its own.
    std::vector<std::unique_ptr<ComplexTag>> days;
};
