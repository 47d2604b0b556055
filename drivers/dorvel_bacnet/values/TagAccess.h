#pragma once

#include "ComplexTag.h"
#include "Tag.h"

// Checked access to the tags of an acknowledgement, whose shape the sender decides. A tag that is missing or
// of the wrong kind throws ParseException.

// The sub-tag at an index of a constructed tag.
TagBase& SubTag(ComplexTag& parent, int place);
// The sub-tag at an index of a constructed tag, as a primitive one.
Tag& PrimitiveSubTag(ComplexTag& parent, int place);
// The first octet of the tag's data.
unsigned char FirstOctet(Tag const& tag);

// Requires exactly four octets, then the given tag number. `wrongNumber` is the text of the exception for
// another number.
void ExpectFourOctets(Tag const& tag, char number, char const* wrongNumber);
// Requires exactly `size` sub-tags. `wrongSize` is the text of the exception.
void ExpectSize(ComplexTag const& tag, int size, char const* wrongSize);
