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

// Reads tags from a stream and values from tags. It does not check numbers, classes or whether a length suits
// the value; the caller does. It has no state, so any thread may call it with a stream of its own.
//
// Departures from ASHRAE 135 clause 20.2.1.3.1: a length octet of 255 is a length of 255, not the
// announcement of four further octets, and a length octet of 0 is a length of 5. Installed systems rely on
// this.
//
// A stream that ends inside a tag throws WrongLengthException.
class TagParser {
public:
    // The next tag with everything below it, or null at the end of the stream. A closing tag without an
    // opening tag is read as a primitive tag of seven octets.
    static std::unique_ptr<TagBase> ReadTag(IStreamBase& stream);

    // The rest of a tag whose first octet has been read.
    static std::unique_ptr<Tag> ReadPrimitiveTag(IStreamBase& stream, TagHeader header);
    // Any closing tag ends the innermost open one. Departure from clause 20.2.1.3.2: the numbers of opening
    // and closing tag are not compared. The depth is not limited and does not use the call stack.
    static std::unique_ptr<ComplexTag> ReadComplexTag(IStreamBase& stream, TagHeader header);

    // A list of `count` tags, empty below 1, filled in order; entries after the end of the stream are null. A
    // count above 0x3FFFFFFF throws std::bad_alloc.
    static std::vector<std::unique_ptr<TagBase>> ReadAppSequence(IStreamBase& stream, int count);

    // Reads tags until the stream ends or a tag has a number of `count` - 1 or more, and returns them by
    // number. Of two tags with the same number the later one is kept. The order of the map has no meaning.
    static std::map<char, std::unique_ptr<TagBase>> ReadSequence(IStreamBase& stream, int count);

    // The data of a tag as a number, as BitConverter reads it. More octets than the type has throw
    // ParseException.
    static float GetFloatValue(Tag const& tag);
    static double GetDoubleValue(Tag const& tag);
    static unsigned long long GetUnsignedInteger(Tag const& tag);
    // Fewer than eight octets are never negative, which departs from clause 20.2.5 (BitConverter.h).
    static long long GetSignedInteger(Tag const& tag);
    // The low 16 bits of up to four octets.
    static PropertyIdentifierEnum GetPropertyIdentifier(Tag const& tag);
    // The only data octet. Any other number of octets throws ArgumentOutOfRangeException.
    static char GetBinaryValue(Tag const& tag);
};
