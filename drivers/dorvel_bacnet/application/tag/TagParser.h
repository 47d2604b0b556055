#pragma once

#include <map>
#include <memory>
#include <vector>

#include "ComplexTag.h"
#include "IStreamBase.h"
#include "PropertyIdentifierEnum.h"
#include "Tag.h"
#include "TagBase.h"
#include "TagHeader.h"

// Reads tags from a stream and values from tags. Of ASHRAE 135 clause 20.2.1 it knows the lengths of one and
// of two further octets, but not the one of four: a length octet of 255 is a length of 255. Numbers, classes
// and the sense of a length are not checked; that is the caller's part.
//
// A stream that ends inside a tag throws WrongLengthException.
class TagParser {
public:
    // The next tag with all that it contains, or null when nothing is left. A closing tag that nothing opened
    // is read as a primitive tag of seven octets.
    static std::unique_ptr<TagBase> ReadTag(IStreamBase& stream);

    // The rest of a tag whose first octet has been taken from the stream.
    static std::unique_ptr<Tag> ReadPrimitiveTag(IStreamBase& stream, TagHeader header);
    // Any closing tag ends the innermost open one: the numbers are not compared. The depth is not limited and
    // takes no room on the call stack.
    static std::unique_ptr<ComplexTag> ReadComplexTag(IStreamBase& stream, TagHeader header);

    // Exactly `count` places (none below 1), filled in order; those beyond the end of the stream are null.
    // A count above 0x3FFFFFFF throws std::bad_alloc.
    static std::vector<std::unique_ptr<TagBase>> ReadAppSequence(IStreamBase& stream, int count);

    // Reads tags until the stream ends or one has a number of `count` - 1 or more, and gives them by their
    // numbers; of two with the same number the later one stays. The map serves lookups: the order of its
    // keys means nothing.
    static std::map<char, std::unique_ptr<TagBase>> ReadSequence(IStreamBase& stream, int count);

    // The data of a tag as a number, as BitConverter reads it: more octets than the type holds throw
    // ParseException.
    static float GetFloatValue(Tag const& tag);
    static double GetDoubleValue(Tag const& tag);
    static unsigned long long GetUnsignedInteger(Tag const& tag);
    // Fewer than eight octets are never negative.
    static long long GetSignedInteger(Tag const& tag);
    // The low 16 bits of up to four octets.
    static PropertyIdentifierEnum GetPropertyIdentifier(Tag const& tag);
    // The one data octet. Any other number of octets throws ArgumentOutOfRangeException.
    static char GetBinaryValue(Tag const& tag);
};
