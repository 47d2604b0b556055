#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ComplexTag.h"
#include "TextValue.h"

// What the weekly and the exception schedule have in common when the host writes one: a text that becomes
// constructed tags. Both are made of entries, four fields each, separated by ",":
//
//     time "," type "," length "," value
//
// The time is eight digits: hour, minute, second, hundredths. The type is the number of an application tag.
// The length is that of the value's text and must be a number, but is used for two types only:
//
//     type                  value
//     1  Boolean            0 is false, any other number true
//     2  Unsigned           sent as 0 if 0, else as 1
//     3  Signed             sent as 0 if 0, else as 1
//     4  Real, 5 Double     a number
//     6  Octet String       hexadecimal digits, two to an octet
//     7  Character String   the text, which can hold neither "," nor ";"
//     8  Bit String         one digit to a bit, the first bit first
//     9  Enumerated         a number
//     10 Date               weekday, day, month, year as in "315032024"; a field starting with "*" is any
//     11 Time               eight digits as the entry's; the length must be 8
//     12 Object Identifier  the instance; the object type stands in place of the length
//
// Any other type is sent as a Null. A text that does not follow the grammar throws std::runtime_error, or
// std::invalid_argument and std::out_of_range ("stoi", "stod") for a number that is none. This is found out
// when the tags are made, not before.
class ScheduleValue : public TextValue {
public:
    // Throws std::runtime_error: a schedule is never one tag.
    Tag ToApplicationTag() const override;
    // Empty, which sends the writer to ToApplicationComplexTags().
    std::vector<Tag> ToApplicationTags() const override;

    // The time tag of an entry, from at least eight characters.
    static Tag ToTimeTag(std::string const& time);
    // The value tag of an entry, from its last three fields. In spite of the name it is a primitive one.
    static Tag ToComplexTag(std::string const& type, std::string const& length, std::string const& text);

protected:
    ScheduleValue() = default;
    ScheduleValue(std::string text, EncodingTypeEnum textEncoding, int dayCount);

private:
    // Empty tags, one for each day. Nothing reads them: each writing makes its own.
    std::vector<std::unique_ptr<ComplexTag>> days;
};
