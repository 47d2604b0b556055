#pragma once

#include "ComplexTag.h"
#include "Tag.h"

// Checked ways into the tags of an acknowledgement, whose shape the sender decides. Whatever is not as
// asked for throws ParseException.

// The sub-tag at a place of a constructed tag.
TagBase& SubTag(ComplexTag& parent, int place);
// The sub-tag at a place of a constructed tag, as a primitive one.
Tag& PrimitiveSubTag(ComplexTag& parent, int place);
// The first octet of the tag's data.
unsigned char FirstOctet(Tag const& tag);

// Passes a tag of exactly four octets that has the number. `wrongNumber` is the text of the failure for
// another number; the length is looked at first.
void ExpectFourOctets(Tag const& tag, char number, char const* wrongNumber);
// Passes a constructed tag of exactly `size` sub-tags. `wrongSize` is the text of the failure.
void ExpectSize(ComplexTag const& tag, int size, char const* wrongSize);
